#include "platform/paintedlabel.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>

namespace ZebSubCtl {

namespace {

class PaintedLabelAccessible : public QAccessibleWidget {
public:
    explicit PaintedLabelAccessible(PaintedLabel* label)
        : QAccessibleWidget(label, QAccessible::StaticText)
    { }

    QString text(QAccessible::Text t) const override
    {
        QString own = QAccessibleWidget::text(t);
        if (t == QAccessible::Name && own.isEmpty())
            return static_cast<const PaintedLabel*>(widget())->Caption();
        return own;
    }
};

QAccessibleInterface* paintedLabelFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("ZebSubCtl::PaintedLabel") && object && object->isWidgetType())
        return new PaintedLabelAccessible(static_cast<PaintedLabel*>(object));
    return nullptr;
}

void installFactoryOnce()
{
    static const bool installed = [] {
        QAccessible::installFactory(paintedLabelFactory);
        return true;
    }();
    (void)installed;
}

}  // namespace

void PaintedLabel::installAccessibility()
{
    installFactoryOnce();
}

PaintedLabel::PaintedLabel(QWidget* parent) : PaintedLabel(QString(), parent) { }

PaintedLabel::PaintedLabel(const QString& caption, QWidget* parent)
    : QWidget(parent), m_caption(caption)
{
    installFactoryOnce();
}

PaintedLabel::~PaintedLabel() = default;

void PaintedLabel::setCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    update();
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void PaintedLabel::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

QSize PaintedLabel::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    return QSize(metrics.horizontalAdvance(m_caption), metrics.height());
}

void PaintedLabel::paintEvent(QPaintEvent*)
{
    if (m_caption.isEmpty())
        return;
    QPainter painter(this);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    // A caption longer than its box ends in an ellipsis rather than running into the next one.
    const QString shown = fontMetrics().elidedText(m_caption, Qt::ElideRight, width());
    painter.drawText(rect(), int(m_alignment) | Qt::TextSingleLine, shown);
}

}  // namespace ZebSubCtl
