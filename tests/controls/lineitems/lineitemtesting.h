#pragma once

#include "contracts/failure.h"
#include "frame/messageboxes.h"
#include "objects/standalonelineitem.h"
#include "objects/standalonelineitems.h"
#include "platform/paintedlabel.h"
#include "support/controltesting.h"
#include "support/testsupport.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QStringList>
#include <QTest>
#include <QWidget>

#include <memory>
#include <optional>

namespace ZebTest {

using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

inline const QString kNotSet = QStringLiteral("Object variable or With block variable not set");

inline const ZebObjects::ErrorInfo kStoreDown{-2147217843, QStringLiteral("ZebObjects.LineItems"),
                                              QStringLiteral("The line store is not available")};

inline ZebObjects::ErrorInfo notSet()
{
    return ZebObjects::ErrorInfo{91, QStringLiteral("ZebSubCtl"), kNotSet};
}

inline ZebObjects::ErrorInfo overflowError()
{
    return ZebObjects::ErrorInfo{6, QStringLiteral("ZebSubCtl"), QStringLiteral("Overflow")};
}

inline ZebObjects::ErrorInfo invalidValue()
{
    return ZebObjects::ErrorInfo{380, QStringLiteral("ZebSubCtl"),
                                 QStringLiteral("Invalid property value")};
}

// A line with texts of its own, numbered k so lines differ.
inline ZebObjects::StandaloneLineItem::Data lineData(int k, bool selected = false, bool mto = false,
                                                     std::optional<QString> comment = {})
{
    ZebObjects::StandaloneLineItem::Data d;
    d.quantity = 10 + k;
    d.type = QStringLiteral("T%1").arg(k);
    d.brand = QStringLiteral("Brand %1").arg(k);
    d.catalogNumber = QStringLiteral("CAT-%1-35K").arg(k);
    d.description = QStringLiteral("Fixture number %1, 3500K").arg(k);
    d.group = QStringLiteral("G%1").arg(k);
    d.mto = mto;
    d.comment = std::move(comment);
    d.selected = selected;
    return d;
}

inline std::shared_ptr<ZebObjects::StandaloneLineItems> lines(int count)
{
    auto out = std::make_shared<ZebObjects::StandaloneLineItems>();
    for (int k = 1; k <= count; ++k)
        out->Add(lineData(k));
    return out;
}

// What the shared accessibility walk leaves out: every widget under root, hidden ones included,
// has an interface; a label with a caption reads as it; the comment picture, check boxes, scroll
// bars and anything that takes the focus carry a name.
inline QStringList unnamedWidgetsShownOrHidden(QWidget* root)
{
    QStringList out;
    QList<QWidget*> widgets = root->findChildren<QWidget*>();
    widgets.prepend(root);
    for (QWidget* w : widgets) {
        QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(w);
        if (!iface) {
            out.append(w->objectName() + QStringLiteral(" (no interface)"));
            continue;
        }
        const QAccessible::Role role = iface->role();
        const bool named = w->focusPolicy() != Qt::NoFocus || role == QAccessible::CheckBox
                           || role == QAccessible::ScrollBar || role == QAccessible::Graphic
                           || role == QAccessible::StaticText;
        if (named && iface->text(QAccessible::Name).isEmpty()
            && !(role == QAccessible::StaticText
                 && static_cast<ZebSubCtl::PaintedLabel*>(w)->Caption().isEmpty()))
            out.append(w->objectName());
    }
    return out;
}

// Labels under root whose caption does not fit their box at the control's font.
inline QStringList captionsThatDoNotFit(QWidget* root)
{
    QStringList out;
    for (auto* label : root->findChildren<ZebSubCtl::PaintedLabel*>()) {
        const QFontMetrics metrics(label->font());
        if (metrics.horizontalAdvance(label->Caption()) > label->width()
            || metrics.height() > label->height())
            out.append(label->objectName() + QStringLiteral(": ") + label->Caption());
    }
    return out;
}

}  // namespace ZebTest
