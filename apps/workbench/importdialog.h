#pragma once

#include "tableimport.h"

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QListWidget;
class QRadioButton;
class QAbstractItemModel;
class QAbstractTableModel;
class QTableView;

// An import before anything is written: which column each field is read from (guessed from the
// header or as the office last mapped it), every row as it will be written with each bad cell
// marked, and the list of problems by row and column. Import is offered only when no row is
// bad; the caller writes the rows.
class ImportDialog : public QDialog {
    Q_OBJECT
public:
    // source: where the rows come from, as the dialog names it ("lines.csv", "the clipboard").
    // offerReplace: the choice between replacing what is there and adding after it.
    ImportDialog(const QString& title, const QString& source, TableImport import, bool offerReplace,
                 QWidget* parent = nullptr);
    ~ImportDialog() override;

    const TableImport& import() const { return m_import; }
    bool replace() const;
    QComboBox* mappingBox(int field) const { return m_boxes.value(field); }
    // The rows as they will be written: a bad cell has the problem's text as its tool tip and
    // accessible description, and its own colours.
    QAbstractItemModel* preview() const;
    QListWidget* problemList() const { return m_problems; }

private:
    void mappingChanged();
    void fill();

    TableImport m_import;
    QList<QComboBox*> m_boxes;
    class PreviewModel;
    PreviewModel* m_model = nullptr;
    QTableView* m_view = nullptr;
    QListWidget* m_problems = nullptr;
    QLabel* m_summary = nullptr;
    QLabel* m_problemsCaption = nullptr;
    QRadioButton* m_replace = nullptr;
    QRadioButton* m_append = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
};
