#include "controls/criteria/ctlbomcriteria.h"

#include "contracts/bom.h"
#include "contracts/textobjects.h"
#include "controls/textselect/ctltextselect.h"
#include "frame/controlregistry.h"
#include "frame/errorpath.h"
#include "frame/makechild.h"
#include "frame/objectref.h"
#include "frame/propertybag.h"
#include "frame/units.h"
#include "platform/checkbox.h"
#include "platform/lineshape.h"
#include "platform/picture.h"

#include <QLabel>

#include <algorithm>

namespace ZebSubCtl {

ZEB_REGISTER_CONTROL(ctlBOMCriteria)

namespace {

// Design places, in twips: headings and their rules start right of the picture; the remarks
// list spans the whole panel.
constexpr int kIndent = 645;
constexpr int kColumnWidth = 1950;
constexpr int kRowHeight = 300;
constexpr int kBoxesTop = 1350;
constexpr int kLineIncludeY = 420;
constexpr int kLineRemarksY = 3090;

// The box of a column of the bill of materials, by its place in the grid.
QRect boxPlace(int column, int row)
{
    return twipsRect(kIndent + column * kColumnWidth, kBoxesTop + row * kRowHeight,
                     kColumnWidth - 75, 255);
}

// A rule under a heading, across the panel.
QLine rule(int y)
{
    return QLine(twipsToPixels(kIndent), twipsToPixels(y), twipsToPixels(7185), twipsToPixels(y));
}

}  // namespace

ctlBOMCriteria::ctlBOMCriteria(QWidget* parent) : UserControl(parent)
{
    setAccessibleName(QStringLiteral("Bill of materials options"));
    setAccessibleDescription(QStringLiteral(
        "Choose the columns of the bill of materials and the default remarks printed at its "
        "bottom"));

    Image2 = makeChild<Picture>(this, "Image2", QRect(),
                                ChildSettings()
                                    .movedTo(twipsPoint(75, 75))
                                    .named(QStringLiteral("Bill of materials"),
                                           QStringLiteral("Picture of a bill of materials")),
                                PictureImage::BillOfMaterials);

    lblIncludeOnCoverLetter = makeChild<QLabel>(
        this, "lblIncludeOnCoverLetter", twipsRect(kIndent, 150, 4500, 240),
        captionSettings(Caption::Heading), QStringLiteral("Include On Bill of Materials"));
    lineInclude = makeChild<LineShape>(this, "lineInclude", QRect(), rule(kLineIncludeY));
    lblIncludeInfo = makeChild<QLabel>(
        this, "lblIncludeInfo", twipsRect(kIndent, 510, 6450, 660),
        captionSettings(Caption::Paragraph),
        QStringLiteral("Choose what you want to include on the Bill of Materials for the "
                       "Submittal.  If you choose to include Default Remarks, they will print at "
                       "the bottom of the Bill of Materials."));

    // The boxes in the order of the bill of materials' columns, read down each column.
    chkQuantity =
        makeChild<CheckBox>(this, "chkQuantity", boxPlace(0, 0), QStringLiteral("Quantity"));
    chkType = makeChild<CheckBox>(this, "chkType", boxPlace(0, 1), QStringLiteral("Type"));
    chkBrand = makeChild<CheckBox>(this, "chkBrand", boxPlace(0, 2), QStringLiteral("Brand"));
    chkMfr = makeChild<CheckBox>(this, "chkMfr", boxPlace(0, 3), QStringLiteral("Manufacturer"));
    chkCatNum =
        makeChild<CheckBox>(this, "chkCatNum", boxPlace(1, 0), QStringLiteral("Catalog Number"));
    chkDesc = makeChild<CheckBox>(this, "chkDesc", boxPlace(1, 1), QStringLiteral("Description"));
    chkLineComments = makeChild<CheckBox>(this, "chkLineComments", boxPlace(1, 2),
                                          QStringLiteral("Line Comments"));
    chkMTO = makeChild<CheckBox>(this, "chkMTO", boxPlace(1, 3), QStringLiteral("MTO"));
    chkGroupCode =
        makeChild<CheckBox>(this, "chkGroupCode", boxPlace(2, 0), QStringLiteral("Group Codes"));
    chkDefaultRemarks = makeChild<CheckBox>(this, "chkDefaultRemarks", boxPlace(2, 1),
                                            QStringLiteral("Default Remarks"));

    lblDefaultRemarks =
        makeChild<QLabel>(this, "lblDefaultRemarks", twipsRect(kIndent, 2820, 4500, 240),
                          captionSettings(Caption::Heading), QStringLiteral("Default Remarks"));
    lineRemarks = makeChild<LineShape>(this, "lineRemarks", QRect(), rule(kLineRemarksY));

    ctlTextSelect = makeChild<::ZebSubCtl::ctlTextSelect>(
        this, "ctlTextSelect", twipsRect(0, 3165, 7185, 3300),
        ChildSettings().named(
            QStringLiteral("Default remarks"),
            QStringLiteral("The remarks that can print at the bottom of the bill of materials; "
                           "tick the ones to print")));
    // The list inside has no caption of its own to be read out.
    if (auto* remarksList = ctlTextSelect->findChild<QWidget*>(QStringLiteral("ListView"))) {
        remarksList->setAccessibleName(QStringLiteral("Default remarks list"));
        remarksList->setAccessibleDescription(
            QStringLiteral("Tick the remarks to print at the bottom of the bill of materials"));
    }
    {
        // Its saved design: remarks can be reordered; everything else as a new list has it.
        PropertyBag design;
        design.WriteProperty(QStringLiteral("AllowReorder"), true, false);
        ctlTextSelect->UserControl_ReadProperties(design);
    }

    // The remarks part follows the "Default Remarks" box, which starts unticked.
    lblDefaultRemarks->setVisible(false);
    lineRemarks->setVisible(false);
    ctlTextSelect->setVisible(false);

    setTabOrder(chkQuantity, chkType);
    setTabOrder(chkType, chkBrand);
    setTabOrder(chkBrand, chkMfr);
    setTabOrder(chkMfr, chkCatNum);
    setTabOrder(chkCatNum, chkDesc);
    setTabOrder(chkDesc, chkLineComments);
    setTabOrder(chkLineComments, chkMTO);
    setTabOrder(chkMTO, chkGroupCode);
    setTabOrder(chkGroupCode, chkDefaultRemarks);
    setTabOrder(chkDefaultRemarks, ctlTextSelect);

    resize(twipsToPixels(7200), twipsToPixels(6540));

    connect(chkBrand, &CheckBox::valueChanged, this, [this] { chkBrand_Click(); });
    connect(chkCatNum, &CheckBox::valueChanged, this, [this] { chkCatNum_Click(); });
    connect(chkDefaultRemarks, &CheckBox::valueChanged, this,
            [this] { chkDefaultRemarks_Click(); });
    connect(chkDesc, &CheckBox::valueChanged, this, [this] { chkDesc_Click(); });
    connect(chkGroupCode, &CheckBox::valueChanged, this, [this] { chkGroupCode_Click(); });
    connect(chkLineComments, &CheckBox::valueChanged, this, [this] { chkLineComments_Click(); });
    connect(chkMfr, &CheckBox::valueChanged, this, [this] { chkMfr_Click(); });
    connect(chkMTO, &CheckBox::valueChanged, this, [this] { chkMTO_Click(); });
    connect(chkQuantity, &CheckBox::valueChanged, this, [this] { chkQuantity_Click(); });
    connect(chkType, &CheckBox::valueChanged, this, [this] { chkType_Click(); });
}

ctlBOMCriteria::~ctlBOMCriteria()
{
    for (const auto& c : std::as_const(mConnections))
        disconnect(c);
}

// --- the bound options

std::shared_ptr<ZebObjects::BOM> ctlBOMCriteria::BOM() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("BOM (Property Get)")),
                          Ending::propagate(), [&] { return mBOM; });
}

void ctlBOMCriteria::setBOM(std::shared_ptr<ZebObjects::BOM> bom)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("BOM (Property Set)")),
                   Ending::propagate(), [&] {
                       for (const auto& c : std::as_const(mConnections))
                           disconnect(c);
                       mConnections.clear();
                       mBOM = std::move(bom);
                       if (auto* b = mBOM.get())
                           mConnections = {connect(b, &ZebObjects::BOM::RemarksPopulated, this,
                                                   [this] { mBOM_RemarksPopulated(); })};
                       // Also with no options: that failure is Populate's to log.
                       Populate();
                   });
}

void ctlBOMCriteria::Populate()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("Populate()")), Ending::logOnly(), [&] {
        // A box whose value changes writes it back through its click.
        const auto show = [](CheckBox* box, bool flag) { box->setValue(flag ? 1 : 0); };
        ZebObjects::BOM& bom = objectRef(mBOM);
        show(chkBrand, bom.IncludeBrand());
        show(chkCatNum, bom.IncludeCatalogNumber());
        show(chkDefaultRemarks, bom.IncludeDefaultRemarks());
        show(chkDesc, bom.IncludeDescription());
        show(chkGroupCode, bom.IncludeGroupCodes());
        show(chkLineComments, bom.IncludeLineComments());
        show(chkMfr, bom.IncludeManufacturer());
        show(chkMTO, bom.IncludeMTO());
        show(chkQuantity, bom.IncludeQuantity());
        show(chkType, bom.IncludeType());
        ctlTextSelect->setTextObjects(bom.DefaultRemarks());
    });
}

// --- the boxes

void ctlBOMCriteria::writeColumn(const char* label, CheckBox* box,
                                 void (ZebObjects::BOM::*write)(bool))
{
    ErrorPath::run(Procedure::untraced(this, QLatin1String(label)), Ending::report(),
                   [&] { (objectRef(mBOM).*write)(box->value() == 1); });
}

void ctlBOMCriteria::chkBrand_Click()
{
    writeColumn("chkBrand_Click()", chkBrand, &ZebObjects::BOM::setIncludeBrand);
}

void ctlBOMCriteria::chkCatNum_Click()
{
    writeColumn("chkCatNum_Click()", chkCatNum, &ZebObjects::BOM::setIncludeCatalogNumber);
}

void ctlBOMCriteria::chkDesc_Click()
{
    writeColumn("chkDesc_Click()", chkDesc, &ZebObjects::BOM::setIncludeDescription);
}

void ctlBOMCriteria::chkGroupCode_Click()
{
    writeColumn("chkGroupCode_Click()", chkGroupCode, &ZebObjects::BOM::setIncludeGroupCodes);
}

void ctlBOMCriteria::chkLineComments_Click()
{
    writeColumn("chkLineComments_Click()", chkLineComments,
                &ZebObjects::BOM::setIncludeLineComments);
}

void ctlBOMCriteria::chkMfr_Click()
{
    writeColumn("chkMfr_Click()", chkMfr, &ZebObjects::BOM::setIncludeManufacturer);
}

void ctlBOMCriteria::chkMTO_Click()
{
    writeColumn("chkMTO_Click()", chkMTO, &ZebObjects::BOM::setIncludeMTO);
}

void ctlBOMCriteria::chkQuantity_Click()
{
    writeColumn("chkQuantity_Click()", chkQuantity, &ZebObjects::BOM::setIncludeQuantity);
}

void ctlBOMCriteria::chkType_Click()
{
    writeColumn("chkType_Click()", chkType, &ZebObjects::BOM::setIncludeType);
}

void ctlBOMCriteria::chkDefaultRemarks_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("chkDefaultRemarks_Click()")),
                   Ending::report(), [&] {
                       const bool ticked = chkDefaultRemarks->value() == 1;
                       lblDefaultRemarks->setVisible(ticked);
                       lineRemarks->setVisible(ticked);
                       ZebObjects::BOM& bom = objectRef(mBOM);
                       bom.setIncludeDefaultRemarks(ticked);
                       // The list follows what the options now hold, not the box.
                       ctlTextSelect->setVisible(bom.IncludeDefaultRemarks());
                       ctlTextSelect->setTextObjects(bom.DefaultRemarks());
                   });
}

void ctlBOMCriteria::mBOM_RemarksPopulated()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("mBOM_RemarksPopulated()")),
                   Ending::report(),
                   [&] { ctlTextSelect->setTextObjects(objectRef(mBOM).DefaultRemarks()); });
}

// --- layout

void ctlBOMCriteria::UserControl_Resize()
{
    ErrorPath::run(
        Procedure::untraced(this, QStringLiteral("UserControl_Resize()")), Ending::logOnly(), [&] {
            // The rule is in twips; a panel too narrow for it leaves the lines and
            // the list without length rather than a negative one.
            const int inner = pixelsToTwips(ScaleWidth());
            for (LineShape* line : {lineInclude, lineRemarks})
                line->setX2(std::max(line->X1(), twipsToPixels(inner - 10)));
            ctlTextSelect->resize(twipsToPixels(std::max(0, inner - 3)), ctlTextSelect->height());
        });
}

}  // namespace ZebSubCtl
