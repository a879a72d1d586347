#include "platform/accessiblelabels.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QFontMetrics>
#include <QHash>
#include <QLineEdit>
#include <QPointer>
#include <QValidator>

namespace ZebSubCtl {

namespace {

QHash<const QWidget*, QPointer<QWidget>>& captions()
{
    static QHash<const QWidget*, QPointer<QWidget>> registry;
    return registry;
}

// A single-line text box for screen readers: its text, caret, selection and editing, as Qt's own
// line edit interface offers them, and the labelled-by link to its caption.
class LabelledLineEditAccessible : public QAccessibleWidget,
                                   public QAccessibleTextInterface,
                                   public QAccessibleEditableTextInterface {
public:
    explicit LabelledLineEditAccessible(QLineEdit* box)
        : QAccessibleWidget(box, QAccessible::EditableText)
    { }

    QLineEdit* box() const { return static_cast<QLineEdit*>(widget()); }

    void* interface_cast(QAccessible::InterfaceType t) override
    {
        if (t == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        if (t == QAccessible::EditableTextInterface && !box()->isReadOnly())
            return static_cast<QAccessibleEditableTextInterface*>(this);
        return QAccessibleWidget::interface_cast(t);
    }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return box()->echoMode() == QLineEdit::Normal ? box()->text() : box()->displayText();
        if (t == QAccessible::Name) {
            QString name = QAccessibleWidget::text(t);
            if (name.isEmpty())
                name = box()->placeholderText();
            return name;
        }
        return QAccessibleWidget::text(t);
    }
    void setText(QAccessible::Text t, const QString& text) override
    {
        if (t != QAccessible::Value) {
            QAccessibleWidget::setText(t, text);
            return;
        }
        QString fixed = text;
        int pos = 0;
        if (box()->validator()
            && box()->validator()->validate(fixed, pos) != QValidator::Acceptable)
            return;
        box()->setText(fixed);
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.editable = !box()->isReadOnly();
        s.readOnly = box()->isReadOnly();
        s.selectableText = true;
        s.passwordEdit = box()->echoMode() != QLineEdit::Normal;
        return s;
    }

    QList<std::pair<QAccessibleInterface*, QAccessible::Relation>> relations(
        QAccessible::Relation match) const override
    {
        auto rels = QAccessibleWidget::relations(match);
        if (match & QAccessible::Label) {
            const QPointer<QWidget> caption = captions().value(widget());
            if (caption)
                if (QAccessibleInterface* c = QAccessible::queryAccessibleInterface(caption.data()))
                    rels.append({c, QAccessible::Label});
        }
        return rels;
    }

    // Text
    void selection(int selectionIndex, int* startOffset, int* endOffset) const override
    {
        *startOffset = *endOffset = 0;
        if (selectionIndex != 0 || !box()->hasSelectedText())
            return;
        *startOffset = box()->selectionStart();
        *endOffset = box()->selectionEnd();
    }
    int selectionCount() const override { return box()->hasSelectedText() ? 1 : 0; }
    void addSelection(int startOffset, int endOffset) override
    {
        setSelection(0, startOffset, endOffset);
    }
    void removeSelection(int selectionIndex) override
    {
        if (selectionIndex == 0)
            box()->deselect();
    }
    void setSelection(int selectionIndex, int startOffset, int endOffset) override
    {
        if (selectionIndex == 0)
            box()->setSelection(startOffset, endOffset - startOffset);
    }
    int cursorPosition() const override { return box()->cursorPosition(); }
    void setCursorPosition(int position) override { box()->setCursorPosition(position); }
    QString text(int startOffset, int endOffset) const override
    {
        if (startOffset > endOffset)
            return QString();
        const QString shown =
            box()->echoMode() == QLineEdit::Normal ? box()->text() : box()->displayText();
        return shown.mid(startOffset, endOffset - startOffset);
    }
    int characterCount() const override { return int(box()->text().size()); }
    QRect characterRect(int offset) const override
    {
        // Measured from the caret, which the box places itself (it knows its own scrolling).
        const QString shown = box()->displayText();
        if (offset < 0 || offset >= shown.size())
            return QRect();
        const QFontMetrics fm(box()->font());
        const QRect caret = box()->inputMethodQuery(Qt::ImCursorRectangle).toRect();
        const int x = caret.x() + fm.horizontalAdvance(shown.left(offset))
                      - fm.horizontalAdvance(shown.left(box()->cursorPosition()));
        const QRect local(x, caret.y(), fm.horizontalAdvance(shown.at(offset)), caret.height());
        return QRect(box()->mapToGlobal(local.topLeft()), local.size());
    }
    int offsetAtPoint(const QPoint& point) const override
    {
        const QPoint local = box()->mapFromGlobal(point);
        return box()->inputMethodQuery(Qt::ImCursorPosition, QPointF(local)).toInt();
    }
    void scrollToSubstring(int startIndex, int endIndex) override
    {
        box()->setCursorPosition(endIndex);
        box()->setCursorPosition(startIndex);
    }
    QString attributes(int offset, int* startOffset, int* endOffset) const override
    {
        *startOffset = *endOffset = offset;
        return QString();
    }

    // Editable text
    void deleteText(int startOffset, int endOffset) override
    {
        replaceText(startOffset, endOffset, QString());
    }
    void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
    void replaceText(int startOffset, int endOffset, const QString& text) override
    {
        QString changed = box()->text();
        changed.replace(startOffset, endOffset - startOffset, text);
        setText(QAccessible::Value, changed);
    }
};

QAccessibleInterface* labelsFactory(const QString& className, QObject* object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    auto* w = static_cast<QWidget*>(object);
    if (captions().contains(w) && className == QLatin1String(object->metaObject()->className()))
        return new LabelledLineEditAccessible(static_cast<QLineEdit*>(w));
    return nullptr;
}

}  // namespace

void labelForScreenReaders(QLineEdit* box, QWidget* caption)
{
    static const bool installed = [] {
        QAccessible::installFactory(&labelsFactory);
        return true;
    }();
    Q_UNUSED(installed);
    if (!captions().contains(box))
        QObject::connect(box, &QObject::destroyed, [box] { captions().remove(box); });
    captions().insert(box, caption);
    // An interface made before the link was known is replaced by one that reports it.
    QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(box);
    if (iface && !dynamic_cast<LabelledLineEditAccessible*>(iface))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(iface));
}

}  // namespace ZebSubCtl
