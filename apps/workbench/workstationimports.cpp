// The workstation's imports: a job's lines from a CSV file or the clipboard, and customers into
// the office's directory, each shown in full before anything is written.
#include "workstation.h"

#include "brandsdialog.h"
#include "contracts/failure.h"
#include "csvtable.h"
#include "directorydialog.h"
#include "importdialog.h"
#include "issuersdialog.h"
#include "officeimports.h"
#include "store/store.h"
#include "store/storebrands.h"
#include "store/storejob.h"
#include "store/storelineitems.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStatusBar>

bool Workstation::importLines(const CsvTable& table, const QString& source)
{
    if (!m_job)
        return false;
    const QString title = QStringLiteral("Import Line Items");
    try {
        finishEdit();
        TableImport import = OfficeImports::lineItems();
        import.setTable(table);
        OfficeImports::mapColumns(import, *m_store, OfficeImports::LineMappingSetting);
        ImportDialog dialog(title, source, import, true, this);
        if (dialog.exec() != QDialog::Accepted)
            return false;
        const auto lines = m_job->lineItems();
        const QList<ZebObjects::LineItemRecord> data = OfficeImports::lines(dialog.import());
        // The lines, the brands new to the office and the mapping the office will be offered
        // next time, together.
        qint32 brandsAdded = 0;
        m_store->writeAll([&] {
            lines->importLines(data, dialog.replace());
            brandsAdded = m_store->brands().addMissing(OfficeImports::brands(dialog.import()));
            m_store->setSetting(OfficeImports::LineMappingSetting, dialog.import().mappingText());
        });
        refresh();
        statusBar()->showMessage(QStringLiteral("Imported %1 lines from %2%3")
                                     .arg(data.size())
                                     .arg(source, OfficeImports::brandsAdded(brandsAdded)),
                                 5000);
        return true;
    } catch (const ZebObjects::Failure& f) {
        showFailure(title, f);
        return false;
    }
}

void Workstation::chooseImportLines()
{
    if (!m_job)
        return;
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Import Line Items"), QString(),
                                     QStringLiteral("CSV files (*.csv *.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    try {
        importLines(CsvTable::read(path), QFileInfo(path).fileName());
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("Import Line Items"), f);
    }
}

void Workstation::pasteLines()
{
    const QString text = QGuiApplication::clipboard()->text();
    try {
        importLines(CsvTable::fromClipboardText(text), QStringLiteral("the clipboard"));
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("Import Line Items"), f);
    }
}

bool Workstation::importCustomers(const CsvTable& table, const QString& source)
{
    const QString title = QStringLiteral("Import Customers");
    try {
        TableImport import = OfficeImports::customers();
        import.setTable(table);
        OfficeImports::mapColumns(import, *m_store, OfficeImports::CustomerMappingSetting);
        ImportDialog dialog(title, source, import, false, this);
        if (dialog.exec() != QDialog::Accepted)
            return false;
        const auto customers = OfficeImports::customers(dialog.import(), *m_store);
        m_store->writeAll([&] {
            m_store->addDirectoryCustomers(customers);
            m_store->setSetting(OfficeImports::CustomerMappingSetting,
                                dialog.import().mappingText());
        });
        statusBar()->showMessage(
            QStringLiteral("Imported %1 customers from %2").arg(customers.size()).arg(source),
            5000);
        return true;
    } catch (const ZebObjects::Failure& f) {
        showFailure(title, f);
        return false;
    }
}

void Workstation::chooseImportCustomers()
{
    const QString path =
        QFileDialog::getOpenFileName(this, QStringLiteral("Import Customers"), QString(),
                                     QStringLiteral("CSV files (*.csv *.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    try {
        importCustomers(CsvTable::read(path), QFileInfo(path).fileName());
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("Import Customers"), f);
    }
}

void Workstation::chooseDirectory()
{
    DirectoryDialog dialog(m_store, this);
    dialog.onImport = [this] { chooseImportCustomers(); };
    dialog.exec();
    // The pages that show customers and contacts see the changes.
    refresh();
}

void Workstation::chooseBrands()
{
    BrandsDialog dialog(m_store, this);
    dialog.exec();
    // A renamed brand is renamed on the job's lines too.
    refresh();
}

void Workstation::chooseIssuers()
{
    try {
        IssuersDialog dialog(m_store->issuedByNames(), this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        m_store->setIssuedByNames(dialog.names());
        // The General Information page offers the names anew.
        refresh();
    } catch (const ZebObjects::Failure& f) {
        showFailure(QStringLiteral("Issued By"), f);
    }
}
