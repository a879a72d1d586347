#pragma once

#include "formdescription.h"
#include "support/testsupport.h"
#include "workstation.h"

#include <QPageSize>
#include <QStringList>

#include <memory>

class QTemporaryDir;
class QWidget;

namespace ZebObjects {
class Store;
class StoreLineItems;
}  // namespace ZebObjects

namespace ZebTest {

// The form the workbench ships with.
FormDescription shippedForm();

// Options for a workstation under test: it remembers nothing of one run for the next.
Workstation::Options workstationOptions();

// Makes the store's services the process-wide ones, as the workbench does when it starts, and
// opens a workstation on the shipped form over the store. No job is open yet; it is not shown.
std::unique_ptr<Workstation> openWorkstation(
    const std::shared_ptr<ZebObjects::Store>& store,
    const Workstation::Options& options = workstationOptions());

// The child of window with this object name and type, with a warning when there is none.
template <class T>
T* control(QWidget& window, const char* name)
{
    auto* found = window.findChild<T*>(QLatin1String(name));
    if (!found)
        qWarning("no %s", name);
    return found;
}

// The same in a workbench window: the pages not shown yet are bound first, as visiting each
// would, so that no test reads a control that is not bound yet.
template <class T>
T* control(WorkbenchWindow& window, const char* name)
{
    window.bindAllPages();
    return control<T>(static_cast<QWidget&>(window), name);
}

// Shows the page with this tab title, as a click on its tab would.
void showPage(Workstation& window, const QString& title);

// Points XDG_DATA_HOME and XDG_CONFIG_HOME at "data" and "config" in home, so that neither this
// program nor a workbench it starts touches the user's own office or settings. With
// nameAsWorkbench, this program also takes the workbench's organization and application names,
// so that it reads and writes the same settings and office as the workbench would.
void useScratchHome(const QTemporaryDir& home, bool nameAsWorkbench);

// Where the workbench makes its office when it is given none: in the data folder.
QString defaultOffice();

// The zeb-workbench program of this build.
QString workbenchProgram();

// Runs zeb-workbench with these arguments and options (environment, user, a bounded wait).
ProgramRun runWorkbench(const QStringList& args, const ProgramOptions& options = {});

// Writes a PDF of this many pages of this size as a cut sheet, each page marked "marker-pN";
// false when it cannot be written.
bool writeCutSheet(const QString& path, const QString& marker, int pages,
                   QPageSize::PageSizeId size = QPageSize::Letter);

// The catalog numbers of the lines, in their order.
QStringList catalogNumbers(ZebObjects::StoreLineItems& lines);

}  // namespace ZebTest
