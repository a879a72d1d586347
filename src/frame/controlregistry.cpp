#include "frame/controlregistry.h"

#include "contracts/failure.h"
#include "frame/libraryinfo.h"
#include "frame/usercontrol.h"

namespace ZebSubCtl {

ControlRegistry& ControlRegistry::instance()
{
    static ControlRegistry registry;
    return registry;
}

QString ControlRegistry::identifierFor(const QString& controlName)
{
    return LibraryInfo::Name() + QLatin1Char('.') + controlName;
}

bool ControlRegistry::add(const QString& controlName, Factory factory,
                          const QMetaObject* metaObject)
{
    const QString identifier = identifierFor(controlName);
    m_factories.insert(identifier, std::move(factory));
    m_metaObjects.insert(identifier, metaObject);
    return true;
}

const QMetaObject* ControlRegistry::metaObject(const QString& identifier) const
{
    return m_metaObjects.value(identifier, nullptr);
}

bool ControlRegistry::contains(const QString& identifier) const
{
    return m_factories.contains(identifier);
}

QStringList ControlRegistry::identifiers() const
{
    return m_factories.keys();
}

UserControl* ControlRegistry::create(const QString& identifier, QWidget* parent) const
{
    const auto it = m_factories.constFind(identifier);
    if (it == m_factories.constEnd())
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::CannotCreateObject,
                                  QStringLiteral("ZebSubCtl.ControlRegistry"),
                                  QStringLiteral("Cannot create control: no control is "
                                                 "registered as \"%1\"")
                                      .arg(identifier));
    return (*it)(parent);
}

}  // namespace ZebSubCtl
