#include "support/workbenchtesting.h"

#include "contracts/runtime.h"
#include "store/store.h"
#include "store/storelineitems.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QTabWidget>
#include <QTemporaryDir>

namespace ZebTest {

FormDescription shippedForm()
{
    return FormDescription::fromFile(QStringLiteral(":/forms/workbench.json"));
}

Workstation::Options workstationOptions()
{
    Workstation::Options options;
    options.remember = false;
    return options;
}

std::unique_ptr<Workstation> openWorkstation(const std::shared_ptr<ZebObjects::Store>& store,
                                             const Workstation::Options& options)
{
    ZebObjects::Runtime::setApplicationServices(store->applicationServices());
    return std::make_unique<Workstation>(shippedForm(), store, options);
}

void showPage(Workstation& window, const QString& title)
{
    QTabWidget* tabs = window.findChild<QTabWidget*>();
    for (int i = 0; i < tabs->count(); ++i)
        if (tabs->tabText(i) == title)
            tabs->setCurrentIndex(i);
}

void useScratchHome(const QTemporaryDir& home, bool nameAsWorkbench)
{
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toUtf8());
    if (nameAsWorkbench) {
        QCoreApplication::setOrganizationName(QStringLiteral("ZebSubmittalControls"));
        QCoreApplication::setApplicationName(QStringLiteral("zeb-workbench"));
    }
}

QString defaultOffice()
{
    return qEnvironmentVariable("XDG_DATA_HOME")
           + QStringLiteral("/ZebSubmittalControls/zeb-workbench/office.sqlite");
}

QString workbenchProgram()
{
    return QStringLiteral(ZEB_WORKBENCH_EXE);
}

ProgramRun runWorkbench(const QStringList& args, const ProgramOptions& options)
{
    return runProgram(workbenchProgram(), args, options);
}

bool writeCutSheet(const QString& path, const QString& marker, int pages,
                   QPageSize::PageSizeId size)
{
    QPdfWriter writer(path);
    writer.setPageSize(QPageSize(size));
    writer.setResolution(72);
    QPainter p(&writer);
    for (int k = 1; k <= pages; ++k) {
        if (k > 1)
            writer.newPage();
        p.drawText(QPointF(72, 90), QStringLiteral("%1-p%2").arg(marker).arg(k));
    }
    return p.end();
}

QStringList catalogNumbers(ZebObjects::StoreLineItems& lines)
{
    QStringList out;
    for (const auto& r : lines.rows())
        out.append(r.data.catalogNumber);
    return out;
}

}  // namespace ZebTest
