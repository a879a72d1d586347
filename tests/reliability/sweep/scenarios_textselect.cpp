#include "controls/textselect/ctltextselect.h"
#include "controls/textselect/frmedittext.h"
#include "objects/sampledata.h"
#include "objects/standalonetextobjects.h"
#include "platform/checkbox.h"
#include "platform/multilinetextbox.h"
#include "sweep/drive.h"
#include "sweep/sweep.h"

#include <QMenu>
#include <QPushButton>

namespace ZebSweep {

namespace {

using ZebSubCtl::ctlTextSelect;
using ZebSubCtl::frmEditText;
using ZebSubCtl::KeyedListView;
using ZebSubCtl::PropertyBag;

ctlTextSelect& textSelect(QWidget& w)
{
    return static_cast<ctlTextSelect&>(w);
}

KeyedListView* listOf(QWidget& w)
{
    return child<KeyedListView>(w, "ListView");
}

// Chooses a menu entry by its access key from a right click on the item.
void chooseFromMenu(QWidget& w, int row, Qt::Key accessKey)
{
    KeyedListView* list = listOf(w);
    if (row >= list->count())
        return;
    ZebTest::WhenPopup popup([accessKey](QMenu& m) { QTest::keyClick(&m, accessKey); });
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, itemPoint(list, row));
}

PropertyBag allowingAll()
{
    PropertyBag bag;
    bag.WriteProperty(QStringLiteral("AllowUpdate"), true, false);
    bag.WriteProperty(QStringLiteral("AllowReorder"), true, false);
    bag.WriteProperty(QStringLiteral("MaxLength"), qint32(300), qint32(0));
    bag.WriteProperty(QStringLiteral("AllowSave"), true, false);
    return bag;
}

std::shared_ptr<ZebObjects::StandaloneTextObjects> bindRemarks(QWidget& w, Script& s)
{
    auto remarks = s.keep(ZebObjects::SampleData::coverLetterRemarks());
    s.host(QStringLiteral("restore design"),
           [&w] { textSelect(w).UserControl_ReadProperties(allowingAll()); });
    s.host(QStringLiteral("bind"), [&w, remarks] { textSelect(w).setTextObjects(remarks); });
    return remarks;
}

void commands(QWidget& w, Script& s)
{
    const auto remarks = bindRemarks(w, s);
    KeyedListView* list = listOf(w);
    s.host(QStringLiteral("Populate"), [&w] { textSelect(w).Populate(); });
    s.user(QStringLiteral("tick first"), [list] { tickItem(list, 0); });
    s.user(QStringLiteral("select second"), [list] { clickItem(list, 1); });
    s.user(QStringLiteral("Move Down"), [&w] { click(w, "cmdMoveDown"); });
    s.user(QStringLiteral("menu Move Up"),
           [&w, list] { chooseFromMenu(w, qMax(0, list->selectedRow()), Qt::Key_U); });
    s.user(QStringLiteral("menu Move Down"),
           [&w, list] { chooseFromMenu(w, qMax(0, list->selectedRow()), Qt::Key_N); });
    s.user(QStringLiteral("Move Up"), [&w] { click(w, "cmdMoveUp"); });
    s.user(QStringLiteral("Save Changes"), [&w] { click(w, "cmdSave"); });
    s.user(QStringLiteral("type a remark"), [&w] {
        auto* box = child<ZebSubCtl::MultiLineTextBox>(w, "txtNewComment");
        box->setFocus();
        ZebTest::typeText(box, QStringLiteral("Shop drawings follow."));
    });
    s.user(QStringLiteral("tick Selected"), [&w] { click(w, "chkIsSelected"); });
    s.user(QStringLiteral("Add"), [&w] { click(w, "cmdAdd"); });
    s.user(QStringLiteral("type and Cancel"), [&w] {
        auto* box = child<ZebSubCtl::MultiLineTextBox>(w, "txtNewComment");
        box->setFocus();
        ZebTest::typeText(box, QStringLiteral("x"));
        click(w, "cmdCancel");
    });
    s.user(QStringLiteral("key on list"), [list] {
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
    });
    s.user(QStringLiteral("mouse over list"),
           [list] { QTest::mouseMove(list->viewport(), itemPoint(list, 0)); });
    s.user(QStringLiteral("menu Delete"), [&w] { chooseFromMenu(w, 0, Qt::Key_D); });
    s.model(QStringLiteral("another holder adds"),
            [remarks] { remarks->Add(QStringLiteral("Added elsewhere."), true); });
    s.model(QStringLiteral("another holder inserts"),
            [remarks] { remarks->Insert(1, QStringLiteral("Inserted elsewhere."), false); });
    s.model(QStringLiteral("another holder removes"), [remarks] {
        const auto all = remarks->Enumerate();
        if (!all.isEmpty())
            remarks->Remove(all.first()->Key());
    });
    s.model(QStringLiteral("another holder moves and saves"), [remarks] {
        const auto all = remarks->Enumerate();
        if (all.size() > 1)
            remarks->MoveUp(all.last()->Key());
        remarks->SaveOrder();
    });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 60, 45); });
    auto bag = std::make_shared<PropertyBag>();
    s.host(QStringLiteral("save design"),
           [&w, bag] { textSelect(w).UserControl_WriteProperties(*bag); });
    s.host(QStringLiteral("restore design"),
           [&w, bag] { textSelect(w).UserControl_ReadProperties(*bag); });
    auto other = s.keep(ZebObjects::SampleData::coverLetterParagraphs());
    s.host(QStringLiteral("rebind"), [&w, other] { textSelect(w).setTextObjects(other); });
}

void editing(QWidget& w, Script& s)
{
    bindRemarks(w, s);
    KeyedListView* list = listOf(w);
    s.user(QStringLiteral("double click, edit, OK"), [list] {
        ZebTest::WhenModal<frmEditText> user([](frmEditText& dialog) {
            auto* box = child<ZebSubCtl::MultiLineTextBox>(dialog, "txtText");
            box->setFocus();
            box->selectAll();
            ZebTest::typeText(box, QStringLiteral("Edited remark."));
            click(dialog, "cmdOK");
        });
        doubleClickItem(list, 0);
    });
    s.user(QStringLiteral("menu Edit, Cancel"), [&w] {
        ZebTest::WhenModal<frmEditText> user(
            [](frmEditText& dialog) { click(dialog, "cmdCancel"); });
        chooseFromMenu(w, 1, Qt::Key_E);
    });
    s.user(QStringLiteral("Enter on list, OK"), [list] {
        ZebTest::WhenModal<frmEditText> user([](frmEditText& dialog) { click(dialog, "cmdOK"); });
        clickItem(list, 2);
        QTest::keyClick(list, Qt::Key_Return);
    });
}

}  // namespace

QList<Scenario> textSelectScenarios()
{
    return {
        Scenario{QStringLiteral("ctlTextSelect"),
                 QStringLiteral("commands and model events"),
                 &shown<ctlTextSelect>,
                 &commands,
                 1,
                 {}},
        Scenario{QStringLiteral("ctlTextSelect"),
                 QStringLiteral("editing in the dialog"),
                 &shown<ctlTextSelect>,
                 &editing,
                 1,
                 {}},
    };
}

}  // namespace ZebSweep
