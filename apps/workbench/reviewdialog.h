#pragma once

#include "store/storehistory.h"

#include <QDialog>
#include <QList>

class QComboBox;
class QDateEdit;
class QLabel;
class QPlainTextEdit;
class QTableWidget;

// Records what came back for an issued revision: one of the trade's actions and a note per line
// (or set for every line of a fixture type at once), the date it came back and the reviewer's
// note. The overall verdict shows as the actions are chosen.
class ReviewDialog : public QDialog {
    Q_OBJECT
public:
    ReviewDialog(const ZebObjects::IssuedRevision& revision,
                 const QList<ZebObjects::IssuedLine>& lines, QWidget* parent = nullptr);

    QList<ZebObjects::StoreHistory::LineReview> reviews() const;
    QDate returned() const;
    QString note() const;
    QString verdict() const;

    // Sets the action of every line of the type chosen beside it ("All Types": every line).
    void applyToType();

private:
    QComboBox* actionBox(int row) const;
    void updateVerdict();

    QList<ZebObjects::IssuedLine> m_lines;
    QTableWidget* m_table = nullptr;
    QComboBox* m_type = nullptr;
    QComboBox* m_typeAction = nullptr;
    QDateEdit* m_returned = nullptr;
    QPlainTextEdit* m_note = nullptr;
    QLabel* m_verdict = nullptr;
};
