// A saved design as the host hands it back: any bytes. Loading either gives a bag or fails with
// invalid property value (380); reading a key with any default either gives a value of the
// default's type or fails with type mismatch (13) or overflow (6); a loaded bag saves and loads
// back to the same values.
#include "fuzzcheck.h"

#include "contracts/failure.h"
#include "frame/propertybag.h"

#include <QByteArray>
#include <QVariant>

#include <cstddef>
#include <cstdint>

using ZebObjects::Failure;
using ZebSubCtl::PropertyBag;

namespace {

void readWithEveryDefault(const PropertyBag& bag, const QString& key)
{
    const QVariant defaults[] = {QVariant(false), QVariant(qint32(0)), QVariant(qint16(0)),
                                 QVariant(QString()), QVariant(0.5)};
    for (const QVariant& d : defaults) {
        try {
            const QVariant v = bag.ReadProperty(key, d);
            if (d.typeId() != QMetaType::Double)
                ZEB_FUZZ_CHECK(v.typeId() == d.typeId(), "a read answers the default's type");
        } catch (const Failure& f) {
            ZEB_FUZZ_CHECK(f.Number() == 13 || f.Number() == 6, "a bad read is 13 or 6");
            ZEB_FUZZ_CHECK(f.Description().contains(key), "a bad read names the key");
        }
    }
    // An absent key always reads as its default.
    ZEB_FUZZ_CHECK(bag.ReadProperty(key + QStringLiteral("\x01absent"), 7).toInt() == 7
                       || bag.contains(key + QStringLiteral("\x01absent")),
                   "an absent key reads as the default");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray json(reinterpret_cast<const char*>(data), qsizetype(size));
    PropertyBag bag;
    try {
        bag = PropertyBag::fromJson(json);
    } catch (const Failure& f) {
        ZEB_FUZZ_CHECK(f.Number() == 380, "a bad design fails with 380");
        ZEB_FUZZ_CHECK(f.Description().startsWith(QLatin1String("Invalid property value: ")),
                       "a bad design says why");
        return 0;
    }
    const QStringList keys = bag.keys();
    for (const QString& key : keys) {
        ZEB_FUZZ_CHECK(bag.contains(key), "every listed key is held");
        readWithEveryDefault(bag, key);
    }

    // Saving and loading again keeps every key and value.
    PropertyBag again;
    try {
        again = PropertyBag::fromJson(bag.toJson());
    } catch (const Failure&) {
        ZEB_FUZZ_CHECK(false, "a saved bag loads again");
    }
    ZEB_FUZZ_CHECK(again.keys() == keys, "a saved bag keeps its keys");
    for (const QString& key : keys)
        ZEB_FUZZ_CHECK(again.ReadProperty(key, QVariant()) == bag.ReadProperty(key, QVariant()),
                       "a saved bag keeps its values");

    // Writing a value equal to its default forgets the key; writing another stores it.
    for (const QString& key : keys) {
        const QVariant stored = bag.ReadProperty(key, QVariant());
        again.WriteProperty(key, stored, stored);
        ZEB_FUZZ_CHECK(!again.contains(key), "writing the default forgets the key");
    }
    ZEB_FUZZ_CHECK(again.isEmpty(), "a bag of only defaults is empty");
    return 0;
}
