// The workstation's job commands: a new job, a copy of the open job, the open job's properties.
#include "workstation.h"

#include "contracts/failure.h"
#include "jobcommands.h"
#include "jobdialog.h"
#include "store/store.h"
#include "store/storejob.h"

#include <QMessageBox>
#include <QPlainTextEdit>
#include <QStatusBar>

namespace {
QStringList numbersBut(const ZebObjects::Store& store, qint64 except)
{
    QStringList out;
    for (const ZebObjects::JobSummary& j : store.jobs())
        if (j.id != except)
            out.append(j.number);
    return out;
}
}  // namespace

void Workstation::showFailure(const QString& title, const ZebObjects::Failure& f)
{
    logView()->appendPlainText(QStringLiteral("zeb-workbench: ") + f.Description());
    QMessageBox::warning(this, title, f.Description());
}

void Workstation::chooseNewJob()
{
    try {
        JobDialog dialog(JobDialog::Purpose::NewJob, {}, numbersBut(*m_store, 0), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        const ZebObjects::JobDetails details = dialog.details();
        m_store->createJob(JobCommands::newJobContents(*m_store, details));
        openJob(jobByNumber(details.number));
        statusBar()->showMessage(QStringLiteral("Made job %1").arg(details.number), 5000);
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("New Job"), f);
    }
}

void Workstation::chooseDuplicateJob()
{
    if (!m_job)
        return;
    try {
        ZebObjects::JobDetails details = m_store->jobDetails(m_job->id());
        const QString from = details.number;
        details.number.clear();
        details.archived = false;
        JobDialog dialog(JobDialog::Purpose::Duplicate, details, numbersBut(*m_store, 0), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        finishEdit();
        const qint64 id = m_store->duplicateJob(m_job->id(), dialog.details(), dialog.copyLines());
        openJob(id);
        statusBar()->showMessage(
            QStringLiteral("Made job %1 from job %2").arg(dialog.details().number, from), 5000);
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("Duplicate Job"), f);
    }
}

void Workstation::chooseJobProperties()
{
    if (!m_job)
        return;
    try {
        JobDialog dialog(JobDialog::Purpose::Properties, m_store->jobDetails(m_job->id()),
                         numbersBut(*m_store, m_job->id()), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        m_store->setJobDetails(m_job->id(), dialog.details());
        // The pages show the job's number and name: they are bound again.
        refresh();
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("Job Properties"), f);
    }
}
