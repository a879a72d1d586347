#pragma once

#include "zebsubctl_export.h"

#include "frame/errorpath.h"

#include <QList>
#include <QString>

namespace ZebSubCtl {

// The procedures now running, innermost last, for tests that must know in which procedure a
// failure happened. Off unless a test turns it on; then every procedure that runs through the
// error path helpers enters and leaves it (ProcedureScope).
class ZEBSUBCTL_EXPORT ProcedureStack {
public:
    struct Frame {
        QString module;
        QString label;
    };

    static void setEnabled(bool on);
    static bool enabled();
    static QList<Frame> current();
    static qsizetype depth();

private:
    friend class ProcedureScope;
    static void push(const Procedure& procedure);
    static void pop();
};

}  // namespace ZebSubCtl
