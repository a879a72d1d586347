// A workbench form description as it may be found on disk: any bytes. Loading either gives a
// form whose every control has an identifier, a name, whole-number places and a saved design,
// or fails with invalid property value (380) saying where the problem is.
#include "fuzzcheck.h"

#include "contracts/failure.h"
#include "formdescription.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

using ZebObjects::Failure;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char*>(data), qsizetype(size));
    FormDescription form;
    try {
        form = FormDescription::fromJson(json);
    } catch (const Failure& f) {
        ZEB_FUZZ_CHECK(f.Number() == 380, "a bad form fails with 380");
        ZEB_FUZZ_CHECK(f.Description().startsWith(QLatin1String("Invalid form description: "))
                           || f.Description().startsWith(QLatin1String("Invalid property value: ")),
                       "a bad form says what is wrong");
        return 0;
    }
    ZEB_FUZZ_CHECK(!form.pages.isEmpty(), "a loaded form has pages");
    for (const FormPage& page : form.pages) {
        for (const FormControl& control : page.controls) {
            // What the window does with a control's saved design when it restores it.
            for (const QString& key : control.properties.keys()) {
                try {
                    control.properties.ReadProperty(key, false);
                    control.properties.ReadProperty(key, qint32(0));
                    control.properties.ReadProperty(key, qint16(0));
                } catch (const Failure& f) {
                    ZEB_FUZZ_CHECK(f.Number() == 13 || f.Number() == 6,
                                   "a badly typed design value fails with 13 or 6");
                }
            }
            ZEB_FUZZ_CHECK(control.properties.toJson().size() > 0, "a design saves");
        }
    }
    return 0;
}
