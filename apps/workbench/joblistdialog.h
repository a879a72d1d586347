#pragma once

#include "store/store.h"

#include <QDialog>

class QTableWidget;

// The office's jobs, one a row (number, name, customers, lines); the chosen one is opened.
class JobListDialog : public QDialog {
    Q_OBJECT
public:
    explicit JobListDialog(const QList<ZebObjects::JobSummary>& jobs, qint64 current = 0,
                           QWidget* parent = nullptr);

    // The job of the selected row; 0 when none is selected.
    qint64 selectedJobId() const;
    QTableWidget* table() const { return m_table; }

private:
    QList<ZebObjects::JobSummary> m_jobs;
    QTableWidget* m_table = nullptr;
};
