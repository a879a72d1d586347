#pragma once

#include "zebsubctl_export.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;
struct QMetaObject;

namespace ZebSubCtl {

class UserControl;

/// Creates the library's controls by identifier: "ZebSubmittalControls." and the control name.
/// Each control registers itself where it is defined (ZEB_REGISTER_CONTROL).
/// Use instance().create() to make a control by identifier.
class ZEBSUBCTL_EXPORT ControlRegistry {
public:
    /// Makes one control as a child of parent.
    using Factory = std::function<UserControl*(QWidget* parent)>;

    /// The process-wide registry that every control registers with.
    static ControlRegistry& instance();
    /// The identifier of a control name: "ctlTextSelect" gives
    /// "ZebSubmittalControls.ctlTextSelect".
    static QString identifierFor(const QString& controlName);

    /// Registers factory under identifierFor(controlName), with the class for designers. Returns
    /// true so that registration can initialise a static.
    bool add(const QString& controlName, Factory factory, const QMetaObject* metaObject = nullptr);
    /// True when a control is registered under identifier.
    bool contains(const QString& identifier) const;
    /// Registered identifiers, sorted.
    QStringList identifiers() const;
    /// A new control; an unknown identifier fails with 429 (cannot create object).
    UserControl* create(const QString& identifier, QWidget* parent = nullptr) const;
    /// The control's class, so that a form designer can describe it without making one;
    /// null for an unknown identifier.
    const QMetaObject* metaObject(const QString& identifier) const;

private:
    QMap<QString, Factory> m_factories;
    QMap<QString, const QMetaObject*> m_metaObjects;
};

}  // namespace ZebSubCtl

#define ZEB_REGISTER_CONTROL(Class)                                                                \
    namespace {                                                                                    \
    [[maybe_unused]] const bool zebRegistered_##Class =                                            \
        ::ZebSubCtl::ControlRegistry::instance().add(                                              \
            QStringLiteral(#Class),                                                                \
            [](QWidget* parent) -> ::ZebSubCtl::UserControl* { return new Class(parent); },        \
            &Class::staticMetaObject);                                                             \
    }
