#include "platform/combobox.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QAccessibleWidget>
#include <QLineEdit>

namespace ZebSubCtl {

namespace {

// Qt's own combo box reads its value as its name on Linux ("Marta Lindqvist" instead of "Issued
// By"); this one is named by its accessible name, and the text is its value.
class ComboBoxAccessible : public QAccessibleWidget {
public:
    explicit ComboBoxAccessible(ComboBox* box) : QAccessibleWidget(box, QAccessible::ComboBox) { }

    ComboBox* box() const { return static_cast<ComboBox*>(widget()); }

    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Value)
            return box()->currentText();
        return QAccessibleWidget::text(t);
    }

    // The drop-down list, then the text box.
    int childCount() const override { return 2; }
    QAccessibleInterface* child(int index) const override
    {
        if (index == 0)
            return QAccessible::queryAccessibleInterface(box()->view());
        if (index == 1 && box()->lineEdit())
            return QAccessible::queryAccessibleInterface(box()->lineEdit());
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (int i = 0; i < 2; ++i)
            if (this->child(i) == child)
                return i;
        return -1;
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.editable = box()->isEditable();
        s.hasPopup = true;
        s.expandable = true;
        s.expanded = box()->view()->isVisible();
        s.collapsed = !s.expanded;
        return s;
    }

    QStringList actionNames() const override
    {
        return {showMenuAction(), pressAction(), setFocusAction()};
    }
    void doAction(const QString& name) override
    {
        if (name == showMenuAction() || name == pressAction()) {
            if (box()->view()->isVisible())
                box()->hidePopup();
            else
                box()->showPopup();
        } else if (name == setFocusAction()) {
            box()->setFocus(Qt::OtherFocusReason);
        }
    }
};

QAccessibleInterface* comboBoxFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("ZebSubCtl::ComboBox") && object && object->isWidgetType())
        return new ComboBoxAccessible(static_cast<ComboBox*>(object));
    return nullptr;
}

}  // namespace

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent)
{
    static const bool installed = [] {
        QAccessible::installFactory(&comboBoxFactory);
        return true;
    }();
    Q_UNUSED(installed);
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setCompleter(nullptr);
    setCurrentIndex(-1);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] { emit changed(); });
    connect(this, &QComboBox::activated, this, [this] { emit clicked(); });
    connect(lineEdit(), &QLineEdit::textChanged, this, &ComboBox::textChanged);
}

ComboBox::~ComboBox() = default;

QString ComboBox::text() const
{
    return currentText();
}

void ComboBox::setText(const QString& text)
{
    if (text == currentText())
        return;
    setEditText(text);
    emit changed();
}

void ComboBox::AddItem(const QString& item)
{
    // Adding the first entry would otherwise show it as the text.
    const QString shown = currentText();
    const int current = currentIndex();
    addItem(item);
    if (current == -1) {
        setCurrentIndex(-1);
        setEditText(shown);
    }
}

}  // namespace ZebSubCtl
