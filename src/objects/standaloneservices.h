#pragma once

#include "zebobjects_export.h"

namespace ZebObjects {

// Puts this library's defaults into the process-wide slots (Runtime): the default diagnostic log
// and the stand-alone application services, each made on first use. Nothing is installed
// until a host or a test calls this; a log or services already in place stay.
ZEBOBJECTS_EXPORT void installStandaloneServices();

}  // namespace ZebObjects
