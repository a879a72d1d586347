#include "controls/textselect/frmedittext.h"

#include "contracts/applicationservices.h"
#include "contracts/textobject.h"
#include "frame/designfont.h"
#include "frame/errorpath.h"
#include "frame/messageboxes.h"
#include "frame/objectref.h"
#include "frame/units.h"
#include "contracts/runtime.h"
#include "platform/multilinetextbox.h"

#include <QPushButton>

namespace ZebSubCtl {

namespace {
const QString kModule = QStringLiteral("frmEditText");
const QString kReformatted =
    QStringLiteral("Your text contains unsupported characters and will be reformatted.\r\n"
                   "Please review the text to be certain you are satisfied with the new format\r\n"
                   "and then select OK.");
}  // namespace

frmEditText::frmEditText(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmEditText"));
    setWindowTitle(QStringLiteral("Quenza"));
    setAccessibleDescription(QStringLiteral("Edits one paragraph or remark."));
    setFont(designFont(font()));
    setFixedSize(twipsToPixels(5475), twipsToPixels(3150));

    txtText = new MultiLineTextBox(this);
    txtText->setObjectName(QStringLiteral("txtText"));
    txtText->setGeometry(twipsRect(75, 75, 5325, 2550));
    txtText->setAccessibleName(QStringLiteral("Text"));
    txtText->setAccessibleDescription(QStringLiteral("The text being edited."));

    cmdOK = new QPushButton(QStringLiteral("&OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setGeometry(twipsRect(3225, 2685, 1050, 450));

    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdCancel->setGeometry(twipsRect(4350, 2685, 1050, 450));

    connect(cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

frmEditText::~frmEditText() = default;

std::shared_ptr<ZebObjects::TextObject> frmEditText::TextObject() const
{
    return ErrorPath::run(Procedure::untraced(this, QStringLiteral("TextObject() - Property Get")),
                          Ending::propagate(), [&] { return mTextObject; });
}

void frmEditText::setTextObject(std::shared_ptr<ZebObjects::TextObject> textObject)
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("TextObject() - Property Set")),
                   Ending::propagate(), [&] {
                       mTextObject = std::move(textObject);
                       if (mTextObject)
                           txtText->setText(mTextObject->Text());
                   });
}

void frmEditText::cmdOK_Click()
{
    ErrorPath::run(Procedure::traced(kModule, QStringLiteral("cmdOK_Click")),
                   Ending::report(ReportVariant::DialogOK), [&] {
                       QString text = txtText->text();
                       if (ZebObjects::Runtime::applicationServices()->ReformatText(text)) {
                           MessageBoxes::MsgBox(kReformatted, MsgBoxStyle::Information,
                                                QStringLiteral("Text Format"));
                           txtText->setText(text);
                           return;
                       }
                       objectRef(mTextObject).setText(txtText->text());
                       accept();
                   });
}

void frmEditText::cmdCancel_Click()
{
    ErrorPath::run(Procedure::untraced(this, QStringLiteral("cmdCancel_Click()")), Ending::report(),
                   [&] { reject(); });
}

}  // namespace ZebSubCtl
