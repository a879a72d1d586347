#pragma once

#include "store/storelineitems.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <memory>

class QLabel;
class QTableView;
class QUndoStack;

// The lines of a job as a table on the store: each edit is written at once, and each change the
// editor makes (an edit, new, inserted, deleted, moved or pasted lines) can be undone and redone.
class LineItemTableModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column {
        Type,
        Quantity,
        Brand,
        CatalogNumber,
        Description,
        Group,
        MTO,
        Comment,
        Selected,
        ColumnCount
    };

    LineItemTableModel(std::shared_ptr<ZebObjects::StoreLineItems> lines, QUndoStack* undo,
                       QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    // Reads the lines again from the store.
    void reload();
    const QList<ZebObjects::StoreLineItems::Row>& rows() const { return m_rows; }

    // The editor's changes, each one step of the undo stack. Rows are 0-based.
    void insertLines(int row, const QList<ZebObjects::LineItemRecord>& lines, const QString& what);
    void removeRows(QList<int> rows);
    // Moves the rows (sorted) one up (-1) or one down (+1); answers whether they moved.
    bool moveRows(const QList<int>& rows, int by);
    void setLine(int row, const ZebObjects::LineItemRecord& data);

    // A failure of the store: told to whoever shows it.
    std::function<void(const QString& what, const QString& description)> onFailure;
    // A brand typed into a line, after the line is written: the office learns a brand it lacks.
    std::function<void(const QString& brand)> onBrandEntered;

private:
    friend class LineCommand;
    std::shared_ptr<ZebObjects::StoreLineItems> m_lines;
    QUndoStack* m_undo;
    QList<ZebObjects::StoreLineItems::Row> m_rows;
};

// The Line Items Editor page: the table, its buttons and the note on what the display shows.
class LineItemEditor : public QWidget {
    Q_OBJECT
public:
    // displayed: how many lines the Line Items page can show.
    LineItemEditor(std::shared_ptr<ZebObjects::StoreLineItems> lines, int displayed,
                   QWidget* parent = nullptr);
    ~LineItemEditor() override;

    QTableView* table() const { return m_table; }
    LineItemTableModel* model() const { return m_model; }
    QUndoStack* undoStack() const { return m_undo; }
    // The selected rows, 0-based, in order.
    QList<int> selectedRows() const;

    void addLine();
    void insertLine();
    void deleteLines();
    void moveUp();
    void moveDown();
    // Rows go to the clipboard as tab-separated text with a header, as a spreadsheet takes them.
    void copyLines();
    // Rows from the clipboard (a spreadsheet's, or copied here) go in after the current row.
    void pasteLines();
    // Called after every change the editor wrote.
    std::function<void()> onChanged;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void selectRows(int first, int count);
    void updateNote();

    std::shared_ptr<ZebObjects::StoreLineItems> m_lines;
    int m_displayed;
    QUndoStack* m_undo = nullptr;
    LineItemTableModel* m_model = nullptr;
    QTableView* m_table = nullptr;
    QLabel* m_note = nullptr;
};
