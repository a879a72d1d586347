#pragma once

#include "zebsubctl_export.h"

#include <QDialog>

#include <memory>

class QPushButton;

namespace ZebObjects {
class TextObject;
}

namespace ZebSubCtl {

class MultiLineTextBox;

/// The modal dialog that edits the text of one paragraph. OK checks the text with the
/// application's formatter first: rewritten text is shown for review and written only on a second
/// OK. Cancel, Escape and closing the window leave the paragraph as it was.
class ZEBSUBCTL_EXPORT frmEditText : public QDialog {
    Q_OBJECT
    /// The paragraph the dialog edits; none until set.
    Q_PROPERTY(
        std::shared_ptr<ZebObjects::TextObject> TextObject READ TextObject WRITE setTextObject)
public:
    /// Creates the dialog, with no paragraph, as a child of parent.
    explicit frmEditText(QWidget* parent = nullptr);
    ~frmEditText() override;

    /// The paragraph being edited, or none.
    std::shared_ptr<ZebObjects::TextObject> TextObject() const;
    /// Keeps the reference and, when there is an object, shows its text.
    void setTextObject(std::shared_ptr<ZebObjects::TextObject> textObject);

private:
    void cmdOK_Click();
    void cmdCancel_Click();

    MultiLineTextBox* txtText;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
    std::shared_ptr<ZebObjects::TextObject> mTextObject;
};

}  // namespace ZebSubCtl
