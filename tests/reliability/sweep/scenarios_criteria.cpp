#include "contracts/textobjects.h"
#include "controls/criteria/ctlbomcriteria.h"
#include "controls/criteria/ctlcvrltrcriteria.h"
#include "controls/criteria/ctlgeneralinfo.h"
#include "controls/textselect/ctltextselect.h"
#include "contracts/runtime.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonebom.h"
#include "objects/standalonesubmittal.h"
#include "platform/checkbox.h"
#include "platform/combobox.h"
#include "platform/dateedit.h"
#include "platform/optionbutton.h"
#include "platform/textbox.h"
#include "sweep/drive.h"
#include "sweep/sweep.h"

#include <QLineEdit>

namespace ZebSweep {

namespace {

using ZebSubCtl::ctlBOMCriteria;
using ZebSubCtl::ctlCvrLtrCriteria;
using ZebSubCtl::ctlGeneralInfo;

// A click near the left edge, on the box or the round button.
void clickBox(QAbstractButton* b)
{
    QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(7, b->height() / 2));
}

void clickNamed(QWidget& w, const char* name)
{
    clickBox(child<QAbstractButton>(w, name));
}

ZebSubCtl::OptionButton* purpose(QWidget& w, int index)
{
    for (auto* o : w.findChildren<ZebSubCtl::OptionButton*>(QStringLiteral("optSubmittalPurpose")))
        if (o->property("Index").toInt() == index)
            return o;
    qFatal("no purpose option");
}

void issuers(Script& s)
{
    auto services = s.keep(std::make_shared<ZebObjects::StandaloneApplicationServices>());
    services->setIssuedByNames(ZebObjects::SampleData::issuedByNames());
    ZebObjects::Runtime::setApplicationServices(services);
}

void generalInfo(QWidget& w, Script& s)
{
    auto& panel = static_cast<ctlGeneralInfo&>(w);
    auto sub = s.keep(ZebObjects::SampleData::submittal());
    s.host(QStringLiteral("bind"), [&panel, sub] { panel.setCriteria(sub); });
    s.user(QStringLiteral("tick Cover Letter"), [&w] { clickNamed(w, "chkCoverLetter"); });
    s.user(QStringLiteral("tick BOM"), [&w] { clickNamed(w, "chkBOM"); });
    s.user(QStringLiteral("tick Labels"), [&w] { clickNamed(w, "chkLabels"); });
    s.user(QStringLiteral("purpose Corrections"), [&w] { clickBox(purpose(w, 5)); });
    s.user(QStringLiteral("purpose Other"), [&w] { clickBox(purpose(w, 7)); });
    s.user(QStringLiteral("type other purpose"), [&w] {
        auto* box = child<ZebSubCtl::TextBox>(w, "txtPurposeOther");
        box->setFocus();
        ZebTest::typeText(box, QStringLiteral("Bid"));
    });
    s.user(QStringLiteral("pick next issuer"), [&w] {
        auto* combo = child<ZebSubCtl::ComboBox>(w, "cmbIssuedBy");
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Down);
    });
    s.user(QStringLiteral("type issuer"), [&w] {
        auto* combo = child<ZebSubCtl::ComboBox>(w, "cmbIssuedBy");
        combo->setFocus();
        ZebTest::typeText(combo->lineEdit(), QStringLiteral("z"));
    });
    s.user(QStringLiteral("type date and leave"), [&w] {
        auto* date = child<ZebSubCtl::DateEdit>(w, "pvdIssueDate");
        date->setFocus(Qt::MouseFocusReason);
        QLineEdit* text = date->lineEdit();
        text->selectAll();
        ZebTest::typeText(text, QStringLiteral("12/28/2026"));
        QTest::keyClick(text, Qt::Key_Tab);
    });
    s.model(QStringLiteral("another holder changes every field"), [sub] {
        sub->setIncludeCoverLetter(!sub->IncludeCoverLetter());
        sub->setIncludeBOM(!sub->IncludeBOM());
        sub->setIncludeLabels(!sub->IncludeLabels());
        sub->setIssuedBy(QStringLiteral("Someone Else"));
        sub->setSubmittalDate(QStringLiteral("2027-01-15"));
        sub->setSubmittalPurpose(sub->SelectPurpose(2));
    });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 80, 40); });
    auto other = s.keep(ZebObjects::SampleData::submittal());
    s.host(QStringLiteral("rebind"), [&panel, other] { panel.setCriteria(other); });
}

void coverLetter(QWidget& w, Script& s)
{
    auto& panel = static_cast<ctlCvrLtrCriteria&>(w);
    auto sub = s.keep(ZebObjects::SampleData::submittal());
    s.host(QStringLiteral("bind"), [&panel, sub] { panel.setSubmittal(sub); });
    s.user(QStringLiteral("tick default paragraphs"),
           [&w] { clickNamed(w, "chkDefaultParagraph"); });
    s.user(QStringLiteral("tick logo"), [&w] { clickNamed(w, "chkIncludeLogo"); });
    s.user(QStringLiteral("tick remarks"), [&w] { clickNamed(w, "chkRemarks"); });
    s.user(QStringLiteral("separate letters"), [&w] { clickNamed(w, "optMultipleCoverLetters"); });
    s.user(QStringLiteral("one letter"), [&w] { clickNamed(w, "optOneCoverLetter"); });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 80, 40); });
    auto other = s.keep(ZebObjects::SampleData::submittal());
    s.host(QStringLiteral("rebind"), [&panel, other] { panel.setSubmittal(other); });
}

void bom(QWidget& w, Script& s)
{
    auto& panel = static_cast<ctlBOMCriteria&>(w);
    auto b = s.keep(ZebObjects::SampleData::bom());
    s.host(QStringLiteral("bind"), [&panel, b] { panel.setBOM(b); });
    for (const char* name :
         {"chkBrand", "chkCatNum", "chkDefaultRemarks", "chkDesc", "chkGroupCode",
          "chkLineComments", "chkMfr", "chkMTO", "chkQuantity", "chkType"})
        s.user(QStringLiteral("tick ") + QLatin1String(name), [&w, name] { clickNamed(w, name); });
    s.user(QStringLiteral("tick a default remark"), [&w] {
        auto* inner = child<ZebSubCtl::ctlTextSelect>(w, "ctlTextSelect");
        tickItem(child<ZebSubCtl::KeyedListView>(*inner, "ListView"), 0);
    });
    s.model(QStringLiteral("another holder refills the remarks"),
            [b] { b->PopulateRemarks(ZebObjects::SampleData::bomRemarkTexts()); });
    s.user(QStringLiteral("resize"), [&w] { grow(w, 80, 40); });
    auto other = s.keep(ZebObjects::SampleData::bom());
    s.host(QStringLiteral("rebind"), [&panel, other] { panel.setBOM(other); });
}

}  // namespace

QList<Scenario> generalInfoScenarios()
{
    Scenario s{QStringLiteral("ctlGeneralInfo"),
               QStringLiteral("every field, model events"),
               &shown<ctlGeneralInfo>,
               &generalInfo,
               1,
               {}};
    s.prepare = &issuers;
    return {s};
}

QList<Scenario> cvrLtrScenarios()
{
    return {Scenario{QStringLiteral("ctlCvrLtrCriteria"),
                     QStringLiteral("every option"),
                     &shown<ctlCvrLtrCriteria>,
                     &coverLetter,
                     1,
                     {}}};
}

QList<Scenario> bomScenarios()
{
    return {Scenario{QStringLiteral("ctlBOMCriteria"),
                     QStringLiteral("every column, remarks"),
                     &shown<ctlBOMCriteria>,
                     &bom,
                     1,
                     {}}};
}

}  // namespace ZebSweep
