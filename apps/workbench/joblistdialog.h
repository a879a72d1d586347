#pragma once

#include "store/store.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTableWidget;

// The office's jobs, one a row (number, name, customers, lines); the chosen one is opened. A job
// is found by part of its number, its name or a customer's name; archived jobs show only when
// asked for.
class JobListDialog : public QDialog {
    Q_OBJECT
public:
    explicit JobListDialog(const QList<ZebObjects::JobSummary>& jobs, qint64 current = 0,
                           QWidget* parent = nullptr);

    // The job of the selected row; 0 when none is selected.
    qint64 selectedJobId() const;
    QTableWidget* table() const { return m_table; }
    // The rows shown, by job number.
    QStringList shownNumbers() const;

private:
    void filter();

    QList<ZebObjects::JobSummary> m_jobs;
    QTableWidget* m_table = nullptr;
    QLineEdit* m_search = nullptr;
    QCheckBox* m_showArchived = nullptr;
    QLabel* m_nothingFound = nullptr;
};
