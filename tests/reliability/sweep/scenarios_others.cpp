#include "controls/customers/ctlcustselect.h"
#include "controls/labels/ctllabelcriteria.h"
#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublinedsp.h"
#include "controls/lineitems/ctlsublines.h"
#include "customerchooser.h"
#include "contracts/runtime.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitem.h"
#include "objects/standalonelineitems.h"
#include "platform/checkbox.h"
#include "platform/scrollbar.h"
#include "sweep/drive.h"
#include "sweep/sweep.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

namespace ZebSweep {

namespace {

using ZebSubCtl::KeyedListView;

// --- labels

void labels(QWidget& w, Script& s)
{
    auto& panel = static_cast<ZebSubCtl::ctlLabelCriteria&>(w);
    auto l = s.keep(ZebObjects::SampleData::labels());
    s.host(QStringLiteral("bind"), [&panel, l] { panel.setLabels(l); });
    s.host(QStringLiteral("read Labels"), [&panel] { panel.Labels(); });
    auto* available = child<KeyedListView>(w, "lsvAvailableItems");
    auto* selected = child<KeyedListView>(w, "lsvSelectedItems");
    s.user(QStringLiteral("select available, Add"), [&w, available] {
        clickItem(available, 0);
        click(w, "cmdAdd");
    });
    s.user(QStringLiteral("double click available"),
           [available] { doubleClickItem(available, 0); });
    s.user(QStringLiteral("Enter on available"), [available] {
        clickItem(available, 0);
        QTest::keyClick(available, Qt::Key_Return);
    });
    s.user(QStringLiteral("select on label, Remove"), [&w, selected] {
        clickItem(selected, 0);
        click(w, "cmdRemove");
    });
    s.user(QStringLiteral("double click on label"), [selected] { doubleClickItem(selected, 0); });
    s.user(QStringLiteral("Enter on label"), [selected] {
        clickItem(selected, 0);
        QTest::keyClick(selected, Qt::Key_Return);
    });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 60, 30); });
    auto other = s.keep(ZebObjects::SampleData::labels());
    s.host(QStringLiteral("rebind"), [&panel, other] { panel.setLabels(other); });
}

// --- line items

std::shared_ptr<ZebObjects::StandaloneLineItem> firstLine(Script& s)
{
    auto items = s.keep(ZebObjects::SampleData::lineItems());
    return s.keep(std::static_pointer_cast<ZebObjects::StandaloneLineItem>(items->Item(1)));
}

void row(QWidget& w, Script& s)
{
    auto& r = static_cast<ZebSubCtl::ctlSubLine&>(w);
    auto item = firstLine(s);
    s.host(QStringLiteral("LineNumber"), [&r] { r.setLineNumber(QStringLiteral("1")); });
    s.host(QStringLiteral("bind"), [&r, item] { r.setLineItem(item); });
    s.host(QStringLiteral("Grayed"), [&r] { r.setGrayed(true); });
    s.host(QStringLiteral("read properties"), [&r] {
        r.LineNumber();
        r.LineItem();
        r.Grayed();
    });
    s.user(QStringLiteral("click check box"), [&w] { click(w, "chkSelect"); });
    s.user(QStringLiteral("click check box again"), [&w] { click(w, "chkSelect"); });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 80, 0); });
    s.host(QStringLiteral("Grayed off"), [&r] { r.setGrayed(false); });
    auto other = firstLine(s);
    s.host(QStringLiteral("rebind"), [&r, other] { r.setLineItem(other); });
}

void rows(QWidget& w, Script& s)
{
    auto& list = static_cast<ZebSubCtl::ctlSubLines&>(w);
    auto items = s.keep(ZebObjects::SampleData::lineItems());
    s.host(QStringLiteral("bind"), [&list, items] { list.setLineItems(items); });
    s.host(QStringLiteral("read properties"), [&list] {
        list.LineHeight();
        list.LineItems();
    });
    s.user(QStringLiteral("click a row's check box"), [&list] {
        if (list.rowCount() > 1)
            click(*list.row(2), "chkSelect");
    });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 80, 0); });
    auto other = s.keep(ZebObjects::SampleData::lineItems());
    s.host(QStringLiteral("rebind"), [&list, other] { list.setLineItems(other); });
}

void viewer(QWidget& w, Script& s)
{
    auto& dsp = static_cast<ZebSubCtl::ctlSubLineDsp&>(w);
    auto items = s.keep(ZebObjects::SampleData::lineItems());
    s.host(QStringLiteral("bind"), [&dsp, items] { dsp.setLineItems(items); });
    s.host(QStringLiteral("read LineItems"), [&dsp] { dsp.LineItems(); });
    auto* bar = child<ZebSubCtl::ScrollBar>(w, "VScroll");
    s.user(QStringLiteral("page down"), [bar] {
        bar->setFocus();
        QTest::keyClick(bar, Qt::Key_PageDown);
    });
    s.user(QStringLiteral("line up"), [bar] { QTest::keyClick(bar, Qt::Key_Up); });
    s.user(QStringLiteral("click a row's check box"), [&w] {
        auto* lines = child<ZebSubCtl::ctlSubLines>(w, "ctlSubLines");
        if (lines->rowCount() > 0) {
            auto* row = lines->row(1);
            if (row && row->isVisible())
                click(*row, "chkSelect");
        }
    });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 40, 60); });
    auto other = s.keep(ZebObjects::SampleData::lineItems());
    s.host(QStringLiteral("rebind"), [&dsp, other] { dsp.setLineItems(other); });
}

// --- customers

void directory(Script& s)
{
    auto services = s.keep(std::make_shared<ZebObjects::StandaloneApplicationServices>());
    services->setCustomerDirectory(ZebObjects::SampleData::customerDirectory());
    ZebObjects::Runtime::setApplicationServices(services);
}

void search(QWidget& w, const QString& name)
{
    auto* keyword = child<QLineEdit>(w, "txtNameKeyword");
    QTest::mouseClick(keyword, Qt::LeftButton);
    keyword->clear();
    ZebTest::typeText(keyword, name);
    child<QLineEdit>(w, "txtAcctNum")->clear();
    click(w, "cmdSearch");
}

void customers(QWidget& w, Script& s)
{
    auto& panel = static_cast<ZebSubCtl::ctlCustSelect&>(w);
    auto coll = s.keep(ZebObjects::SampleData::customers());
    s.host(QStringLiteral("AllowAdd"), [&panel] { panel.setAllowAdd(true); });
    s.host(QStringLiteral("AllowDelete"), [&panel] { panel.setAllowDelete(true); });
    s.host(QStringLiteral("ShowCheckboxes"), [&panel] { panel.setShowCheckboxes(true); });
    s.host(QStringLiteral("bind"), [&panel, coll] { panel.setCustomers(coll); });
    s.host(QStringLiteral("read properties"), [&panel] {
        panel.Customers();
        panel.AllowAdd();
        panel.AllowDelete();
        panel.ShowCheckboxes();
    });
    auto* list = child<KeyedListView>(w, "lsvCustomers");
    s.user(QStringLiteral("search one match"), [&w] { search(w, QStringLiteral("Summit")); });
    s.user(QStringLiteral("Add"), [&w] { click(w, "cmdAdd"); });
    s.user(QStringLiteral("search, choose"), [&w] {
        ZebTest::WhenModal<ZebObjects::CustomerChooser> chooser(
            [](ZebObjects::CustomerChooser& dialog) {
                auto* matches = dialog.findChild<QTreeWidget*>(QStringLiteral("lsvMatches"));
                const QRect rect = matches->visualItemRect(
                    matches->topLevelItem(matches->topLevelItemCount() - 1));
                QTest::mouseClick(matches->viewport(), Qt::LeftButton, {}, rect.center());
                QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")),
                                  Qt::LeftButton);
            });
        search(w, QStringLiteral("Electric"));
    });
    s.user(QStringLiteral("Add chosen"), [&w] { click(w, "cmdAdd"); });
    s.user(QStringLiteral("Clear"), [&w] { click(w, "cmdClear"); });
    s.user(QStringLiteral("untick first"), [list] { tickItem(list, 0); });
    s.user(QStringLiteral("select second, Remove"), [&w, list] {
        clickItem(list, 1);
        click(w, "cmdRemove");
    });
    s.model(QStringLiteral("another holder removes"), [coll] {
        if (coll->Count() > 1)
            coll->Remove(qint16(coll->Count()));
    });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 60, 40); });
    auto bag = std::make_shared<ZebSubCtl::PropertyBag>();
    s.host(QStringLiteral("save design"),
           [&panel, bag] { panel.UserControl_WriteProperties(*bag); });
    s.host(QStringLiteral("restore design"),
           [&panel, bag] { panel.UserControl_ReadProperties(*bag); });
    s.user(QStringLiteral("Remove All"), [&w] { click(w, "cmdRemoveAll"); });
    auto other = s.keep(ZebObjects::SampleData::customers());
    s.host(QStringLiteral("rebind"), [&panel, other] { panel.setCustomers(other); });
}

}  // namespace

QList<Scenario> labelScenarios()
{
    Scenario s{QStringLiteral("ctlLabelCriteria"),
               QStringLiteral("add, remove, reorder"),
               &shown<ZebSubCtl::ctlLabelCriteria>,
               &labels,
               1,
               {}};
    s.rowsSurviveRebind = true;
    return {s};
}

QList<Scenario> subLineScenarios()
{
    return {Scenario{QStringLiteral("ctlSubLine"),
                     QStringLiteral("one row"),
                     &shown<ZebSubCtl::ctlSubLine>,
                     &row,
                     1,
                     {}}};
}

QList<Scenario> subLinesScenarios()
{
    // Twenty rows fill alike: every third call (prime to the calls one row makes) still fails
    // each member of a row somewhere, in a third of the time.
    return {Scenario{QStringLiteral("ctlSubLines"),
                     QStringLiteral("twenty rows"),
                     &shown<ZebSubCtl::ctlSubLines>,
                     &rows,
                     3,
                     {}}};
}

QList<Scenario> subLineDspScenarios()
{
    return {Scenario{QStringLiteral("ctlSubLineDsp"),
                     QStringLiteral("scrolling twenty rows"),
                     &shown<ZebSubCtl::ctlSubLineDsp>,
                     &viewer,
                     3,
                     {}}};
}

QList<Scenario> custSelectScenarios()
{
    Scenario s{QStringLiteral("ctlCustSelect"),
               QStringLiteral("search, add, remove, tick"),
               &shown<ZebSubCtl::ctlCustSelect>,
               &customers,
               1,
               {}};
    s.prepare = &directory;
    return {s};
}

}  // namespace ZebSweep
