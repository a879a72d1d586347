#pragma once

#include "zebsubctl_export.h"

#include <QComboBox>

namespace ZebSubCtl {

// An editable combo box with the two notifications the controls rely on. changed() runs when
// the text really changes by typing or because code set it, never when code sets the text it
// already has. clicked() runs when the user chooses an entry of the list, with the mouse from
// the drop-down list or with the arrow keys; the text then becomes the entry's without a
// changed(). Nothing completes or inserts text on its own: the text is what was typed or chosen.
class ZEBSUBCTL_EXPORT ComboBox : public QComboBox {
    Q_OBJECT
    Q_PROPERTY(QString Text READ text WRITE setText NOTIFY textChanged USER true)
public:
    explicit ComboBox(QWidget* parent = nullptr);
    ~ComboBox() override;

    QString text() const;
    void setText(const QString& text);

    void AddItem(const QString& item);
    qint32 ListCount() const { return count(); }

signals:
    void changed();
    void clicked();
    // Every change of the text, typed, chosen or set: the property's notify signal.
    void textChanged(const QString& text);
};

}  // namespace ZebSubCtl
