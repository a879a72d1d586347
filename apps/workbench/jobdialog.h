#pragma once

#include "store/store.h"

#include <QDialog>
#include <QStringList>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;

// A job's number, name, site and people, for a new job, a copy of a job or the open job's
// properties. The number is checked as it is typed against the office's other jobs; OK is
// offered only for a number of its own and a name.
class JobDialog : public QDialog {
    Q_OBJECT
public:
    enum class Purpose { NewJob, Duplicate, Properties };

    // takenNumbers: the numbers of the office's other jobs.
    JobDialog(Purpose purpose, const ZebObjects::JobDetails& details,
              const QStringList& takenNumbers, QWidget* parent = nullptr);

    ZebObjects::JobDetails details() const;
    // Duplicate: whether the line items are copied too.
    bool copyLines() const;
    // What is wrong with the number as typed; empty when it is fine.
    QString numberProblem() const;

private:
    void check();

    Purpose m_purpose;
    ZebObjects::JobDetails m_details;
    QStringList m_taken;
    QLineEdit* m_number = nullptr;
    QLabel* m_numberCheck = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_site = nullptr;
    QLineEdit* m_architect = nullptr;
    QLineEdit* m_engineer = nullptr;
    QLineEdit* m_contractor = nullptr;
    QCheckBox* m_copyLines = nullptr;
    QCheckBox* m_archived = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
};
