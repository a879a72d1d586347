#include "controls/lineitems/lineitemaccessible.h"

#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublinedsp.h"
#include "controls/lineitems/ctlsublines.h"
#include "platform/checkbox.h"
#include "platform/imagebox.h"
#include "platform/paintedlabel.h"
#include "platform/scrollbar.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace ZebSubCtl {

namespace {

ctlSubLine* rowOf(const QObject* part)
{
    return part ? qobject_cast<ctlSubLine*>(part->parent()) : nullptr;
}

QString join(const QStringList& parts, const QString& separator)
{
    QStringList kept;
    for (const QString& p : parts)
        if (!p.trimmed().isEmpty())
            kept.append(p.trimmed());
    return kept.join(separator);
}

// A row's part reports not showing while its row is scrolled out of the window.
class RowPartAccessible : public QAccessibleWidget {
public:
    RowPartAccessible(QWidget* part, QAccessible::Role role) : QAccessibleWidget(part, role) { }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        const ctlSubLine* row = rowOf(widget());
        if (row && !LineItemAccess::rowShowing(row)) {
            s.invisible = true;
            s.offscreen = true;
        }
        return s;
    }
};

class LineRowAccessible : public QAccessibleWidget {
public:
    explicit LineRowAccessible(ctlSubLine* row) : QAccessibleWidget(row, QAccessible::ListItem) { }

    QString text(QAccessible::Text t) const override
    {
        const auto* row = static_cast<const ctlSubLine*>(widget());
        if (!LineItemAccess::isBuilt(row))
            return QAccessibleWidget::text(t);
        if (t == QAccessible::Name)
            return QStringLiteral("Line ") + row->LineNumber();
        if (t == QAccessible::Description)
            return LineItemAccess::lineReading(row);
        return QAccessibleWidget::text(t);
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        if (!LineItemAccess::rowShowing(widget())) {
            s.invisible = true;
            s.offscreen = true;
        }
        return s;
    }
};

class RowCheckAccessible : public RowPartAccessible {
public:
    explicit RowCheckAccessible(CheckBox* box) : RowPartAccessible(box, QAccessible::CheckBox) { }

    QString text(QAccessible::Text t) const override
    {
        const QString own = RowPartAccessible::text(t);
        if (t != QAccessible::Name)
            return own;
        const QString summary = LineItemAccess::lineSummary(rowOf(widget()));
        return summary.isEmpty() ? own : own + QStringLiteral(": ") + summary;
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = RowPartAccessible::state();
        const auto* box = static_cast<const CheckBox*>(widget());
        s.checkable = true;
        s.checked = box->value() == 1;
        s.checkStateMixed = box->value() == 2;
        return s;
    }

    QStringList actionNames() const override
    {
        return {QAccessibleActionInterface::toggleAction(),
                QAccessibleActionInterface::setFocusAction()};
    }

    void doAction(const QString& name) override
    {
        auto* box = static_cast<CheckBox*>(widget());
        if (name == QAccessibleActionInterface::toggleAction()
            || name == QAccessibleActionInterface::pressAction())
            box->click();
        else if (name == QAccessibleActionInterface::setFocusAction())
            box->setFocus(Qt::OtherFocusReason);
    }
};

// A row's text: named by what it shows, described and labelled by its column heading.
class RowLabelAccessible : public RowPartAccessible {
public:
    explicit RowLabelAccessible(PaintedLabel* label)
        : RowPartAccessible(label, QAccessible::StaticText)
    { }

    QString text(QAccessible::Text t) const override
    {
        const auto* label = static_cast<const PaintedLabel*>(widget());
        const QString name = label->objectName();
        if (t == QAccessible::Name) {
            if (name == QLatin1String("lblMTO"))
                return QStringLiteral("Made to order");
            return label->Caption();
        }
        if (t == QAccessible::Description) {
            static const std::pair<const char*, const char*> headings[] = {
                {"lblNumber", "Line number"},
                {"lblQuantity", "Quantity"},
                {"lblType", "Type"},
                {"lblBrand", "Brand"},
                {"lblCatNum", "Catalog number"},
                {"lblGroup", "Group"},
                {"lblDescription", "Description"}};
            for (const auto& [objectName, heading] : headings)
                if (name == QLatin1String(objectName))
                    return QLatin1String(heading);
            return {};
        }
        return RowPartAccessible::text(t);
    }

    QList<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(
        QAccessible::Relation match) const override
    {
        // Qt's sense: the heading is the Label of this text (labelled-by to a screen reader).
        auto found = RowPartAccessible::relations(match);
        if (match & QAccessible::Label)
            if (QWidget* heading = LineItemAccess::headingOf(widget()))
                if (QAccessibleInterface* h = QAccessible::queryAccessibleInterface(heading))
                    found.append({h, QAccessible::Label});
        return found;
    }
};

// The viewer's scroll bar, read in lines: its value is the first line in the window.
class LinesScrollBarAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit LinesScrollBarAccessible(ScrollBar* bar)
        : QAccessibleWidget(bar, QAccessible::ScrollBar)
    { }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return QStringLiteral("line %1 of %2").arg(firstLine()).arg(lineCount());
        return QAccessibleWidget::text(t);
    }

    QVariant currentValue() const override { return firstLine(); }
    void setCurrentValue(const QVariant& value) override
    {
        auto* b = bar();
        const int pixels = (value.toInt() - 1) * lineHeight();
        b->setValueChecked(qBound(b->Min(), pixels, b->Max()));
    }
    QVariant maximumValue() const override { return lineCount(); }
    QVariant minimumValue() const override { return 1; }
    QVariant minimumStepSize() const override { return 1; }

private:
    ScrollBar* bar() const { return static_cast<ScrollBar*>(widget()); }
    const ctlSubLines* lines() const
    {
        const QWidget* viewer = bar()->parentWidget();
        return viewer ? viewer->findChild<const ctlSubLines*>(QStringLiteral("ctlSubLines"))
                      : nullptr;
    }
    int lineHeight() const
    {
        const ctlSubLines* l = lines();
        const int h = l && l->rowCount() > 0 ? l->row(1)->height() : 0;
        return h > 0 ? h : 1;
    }
    int firstLine() const { return bar()->Value() / lineHeight() + 1; }
    int lineCount() const
    {
        const ctlSubLines* l = lines();
        return l ? l->rowCount() : 0;
    }
};

QAccessibleInterface* lineItemFactory(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    if (className == QLatin1String("ZebSubCtl::ctlSubLine"))
        return new LineRowAccessible(static_cast<ctlSubLine*>(widget));
    if (className == QLatin1String("ZebSubCtl::CheckBox") && rowOf(widget))
        return new RowCheckAccessible(static_cast<CheckBox*>(widget));
    if (className == QLatin1String("ZebSubCtl::PaintedLabel") && rowOf(widget))
        return new RowLabelAccessible(static_cast<PaintedLabel*>(widget));
    if (className == QLatin1String("ZebSubCtl::ImageBox") && rowOf(widget))
        return new RowPartAccessible(widget, QAccessible::Graphic);
    if (className == QLatin1String("ZebSubCtl::ScrollBar")
        && qobject_cast<ctlSubLineDsp*>(widget->parentWidget()))
        return new LinesScrollBarAccessible(static_cast<ScrollBar*>(widget));
    return nullptr;
}

}  // namespace

void LineItemAccess::install()
{
    // Qt asks the factory installed last first: this one goes in after the platform's own
    // factories for labels and pictures.
    static const bool installed = [] {
        PaintedLabel::installAccessibility();
        ImageBox::installAccessibility();
        QAccessible::installFactory(&lineItemFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

bool LineItemAccess::isBuilt(const ctlSubLine* row)
{
    return row && row->lblNumber && row->lblQuantity && row->lblType && row->lblBrand
           && row->lblCatNum && row->lblGroup && row->lblMTO && row->imgComment;
}

QString LineItemAccess::lineSummary(const ctlSubLine* row)
{
    if (!isBuilt(row))
        return {};
    const QString quantity = row->lblQuantity->Caption().trimmed();
    const QString type = row->lblType->Caption().trimmed();
    QString what = quantity;
    if (!type.isEmpty())
        what = quantity.isEmpty() ? QStringLiteral("type ") + type
                                  : quantity + QStringLiteral(" of type ") + type;
    return join(
        {what, join({row->lblBrand->Caption(), row->lblCatNum->Caption()}, QStringLiteral(" "))},
        QStringLiteral(", "));
}

QString LineItemAccess::lineReading(const ctlSubLine* row)
{
    if (!isBuilt(row))
        return {};
    QStringList parts{lineSummary(row)};
    const QString group = row->lblGroup->Caption().trimmed();
    if (!group.isEmpty())
        parts.append(QStringLiteral("group ") + group);
    if (!row->lblMTO->isHidden())
        parts.append(QStringLiteral("made to order"));
    if (!row->imgComment->isHidden())
        parts.append(QStringLiteral("has a comment"));
    return QStringLiteral("Line %1: %2").arg(row->LineNumber(), join(parts, QStringLiteral(", ")));
}

bool LineItemAccess::rowShowing(const QWidget* row)
{
    if (!row->isVisible())
        return false;
    const QWidget* list = row->parentWidget();
    const QWidget* window = list ? list->parentWidget() : nullptr;
    if (!window)
        return true;
    return window->rect().intersects(QRect(list->pos() + row->pos(), row->size()));
}

QWidget* LineItemAccess::headingOf(const QWidget* rowLabel)
{
    static const std::pair<const char*, const char*> columns[] = {{"lblQuantity", "lblQty"},
                                                                  {"lblType", "lblType"},
                                                                  {"lblBrand", "lblBrand"},
                                                                  {"lblCatNum", "lblCatNum"},
                                                                  {"lblGroup", "lblGroup"}};
    const char* heading = nullptr;
    for (const auto& [cell, head] : columns)
        if (rowLabel->objectName() == QLatin1String(cell))
            heading = head;
    if (!heading)
        return nullptr;
    // label -> row -> list -> window -> viewer
    const QWidget* w = rowLabel;
    for (int up = 0; up < 4 && w; ++up)
        w = w->parentWidget();
    if (!qobject_cast<const ctlSubLineDsp*>(w))
        return nullptr;
    auto* band =
        w->findChild<QWidget*>(QStringLiteral("ControlHeading"), Qt::FindDirectChildrenOnly);
    return band ? band->findChild<QWidget*>(QLatin1String(heading), Qt::FindDirectChildrenOnly)
                : nullptr;
}

}  // namespace ZebSubCtl
