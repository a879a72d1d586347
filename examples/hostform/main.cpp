// A host application with business objects of its own. It installs its services and its log,
// makes a paragraph list and a customer panel by identifier and binds them by property name
// (the "By identifier" tab), and shows the same two controls from a Designer form compiled by
// uic (the "From a form" tab).
//
//   zeb-hostform              shows the window
//   zeb-hostform --selftest   makes both forms, binds them, works them as a user would through
//                             their buttons, checks what reached the host's objects, exits 0 or 1
//   zeb-hostform --screenshot out.png [--tab 1]
//                             renders the window (the tab given, 0 or 1) to a PNG and exits
#include "hostobjects.h"
#include "hostservices.h"
#include "ui_hostform.h"

#include "contracts/failure.h"
#include "controls/customers/ctlcustselect.h"
#include "controls/textselect/ctltextselect.h"
#include "frame/controlregistry.h"
#include "frame/messageboxes.h"
#include "frame/usercontrol.h"
#include "contracts/runtime.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTabWidget>
#include <QTextStream>

#include <memory>

using namespace HostForm;

namespace {

// One job's worth of the host's data.
struct Job {
    std::shared_ptr<Paragraphs> remarks = std::make_shared<Paragraphs>();
    std::shared_ptr<Clients> customers = std::make_shared<Clients>();

    Job()
    {
        remarks->Add(QStringLiteral("Fixtures ship in one delivery."), true);
        remarks->Add(QStringLiteral("Finishes to be confirmed by the architect."), false);
        remarks->Add(QStringLiteral("Lamps are included."), true);
    }
};

QList<std::shared_ptr<Client>> addressBook()
{
    return {std::make_shared<Client>(QStringLiteral("C-1001"), QStringLiteral("Northgate Electric"),
                                     QStringLiteral("Portland"), QStringLiteral("OR")),
            std::make_shared<Client>(QStringLiteral("C-1002"),
                                     QStringLiteral("Harbor Lighting Supply"),
                                     QStringLiteral("Tacoma"), QStringLiteral("WA")),
            std::make_shared<Client>(QStringLiteral("C-1003"), QStringLiteral("Summit Builders"),
                                     QStringLiteral("Boise"), QStringLiteral("ID"))};
}

// A control by identifier, bound by property name: what a host does from a form description.
ZebSubCtl::UserControl* place(const QString& identifier, const char* property,
                              const QVariant& object, QWidget* parent)
{
    ZebSubCtl::UserControl* control =
        ZebSubCtl::ControlRegistry::instance().create(identifier, parent);
    // The object goes in as the contract type the property takes.
    if (!control->setProperty(property, object))
        throw ZebObjects::Failure(
            ZebObjects::ErrorNumber::NoSuchProperty, QStringLiteral("zeb-hostform"),
            QStringLiteral("%1 does not take %2").arg(identifier, QLatin1String(property)));
    return control;
}

// Without a person to answer, a box is a failure of the self-test, not a wait.
class RecordedBoxes : public ZebSubCtl::MessageBoxService {
public:
    int MsgBox(const QString& prompt, int, const QString& title) override
    {
        shown.append(title + QStringLiteral(": ") + prompt);
        return ZebSubCtl::MsgBoxAnswer::OK;
    }
    QStringList shown;
};

struct Check {
    QStringList problems;
    void expect(bool ok, const QString& what)
    {
        if (!ok)
            problems.append(what);
    }
};

template <class W>
W* child(QWidget* control, const char* name)
{
    return control->findChild<W*>(QLatin1String(name));
}

// Adds a paragraph through the list's entry box and Add button, as a user does.
void addParagraph(QWidget* list, const QString& text)
{
    child<QPlainTextEdit>(list, "txtNewComment")->insertPlainText(text);
    child<QPushButton>(list, "cmdAdd")->click();
}

// Finds a customer by part of the name and adds it, as a user does.
void addCustomer(QWidget* panel, const QString& keyword)
{
    child<QLineEdit>(panel, "txtNameKeyword")->setText(keyword);
    child<QPushButton>(panel, "cmdSearch")->click();
    child<QPushButton>(panel, "cmdAdd")->click();
}

int rows(QWidget* control, const char* list)
{
    return child<QAbstractItemView>(control, list)->model()->rowCount();
}

void checkForm(Check& check, const QString& form, QWidget* list, QWidget* panel, const Job& job)
{
    check.expect(rows(list, "ListView") == 3, form + QStringLiteral(": the list shows 3 remarks"));
    addParagraph(list, QStringLiteral("Delivery in March."));
    check.expect(job.remarks->Count() == 4
                     && job.remarks->Item(4)->Text() == QStringLiteral("Delivery in March."),
                 form + QStringLiteral(": Add puts the typed remark into the host's list"));
    check.expect(rows(list, "ListView") == 4, form + QStringLiteral(": the list shows 4 remarks"));

    addCustomer(panel, QStringLiteral("harbor"));
    check.expect(job.customers->Count() == 1
                     && job.customers->Item(1)->Key() == QStringLiteral("C-1002")
                     && job.customers->Item(1)->Included(),
                 form + QStringLiteral(": Search and Add put the customer into the host's list"));
    check.expect(rows(panel, "lsvCustomers") == 1, form + QStringLiteral(": the panel shows it"));
}

int selfTest(const StderrLog& log, const RecordedBoxes& boxes)
{
    Check check;
    {
        Job job;
        QWidget form;
        ZebSubCtl::UserControl* list = place(
            QStringLiteral("ZebSubmittalControls.ctlTextSelect"), "TextObjects",
            QVariant::fromValue(std::shared_ptr<ZebObjects::TextObjects>(job.remarks)), &form);
        list->setProperty("AllowUpdate", true);
        ZebSubCtl::UserControl* panel = place(
            QStringLiteral("ZebSubmittalControls.ctlCustSelect"), "Customers",
            QVariant::fromValue(std::shared_ptr<ZebObjects::Customers>(job.customers)), &form);
        panel->setProperty("AllowAdd", true);
        checkForm(check, QStringLiteral("by identifier"), list, panel, job);
    }
    {
        Job job;
        QWidget form;
        Ui::DesignedForm ui;
        ui.setupUi(&form);
        check.expect(ui.remarks->AllowUpdate() && ui.remarks->MaxLength() == 200
                         && ui.customers->AllowAdd(),
                     QStringLiteral("from a form: the design values of the form are applied"));
        ui.remarks->setProperty(
            "TextObjects",
            QVariant::fromValue(std::shared_ptr<ZebObjects::TextObjects>(job.remarks)));
        ui.customers->setProperty(
            "Customers",
            QVariant::fromValue(std::shared_ptr<ZebObjects::Customers>(job.customers)));
        checkForm(check, QStringLiteral("from a form"), ui.remarks, ui.customers, job);
    }
    check.expect(log.failures().isEmpty(), QStringLiteral("no procedure failed"));
    check.expect(boxes.shown.isEmpty(), QStringLiteral("no message box was shown"));

    QTextStream out(stdout);
    for (const QString& problem : std::as_const(check.problems))
        out << "FAILED: " << problem << '\n';
    for (const QString& box : boxes.shown)
        out << "box: " << box << '\n';
    if (check.problems.isEmpty())
        out << "zeb-hostform: both forms made, bound and worked\n";
    return check.problems.isEmpty() ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);

    // The host's own services and log, in place before the first control is made.
    const auto log = std::make_shared<StderrLog>();
    ZebObjects::Runtime::setDiagnosticLog(log);
    ZebObjects::Runtime::setApplicationServices(std::make_shared<Services>(addressBook()));

    if (app.arguments().contains(QStringLiteral("--selftest"))) {
        const auto boxes = std::make_shared<RecordedBoxes>();
        ZebSubCtl::MessageBoxes::setService(boxes);
        try {
            return selfTest(*log, *boxes);
        } catch (const ZebObjects::Failure& failure) {
            QTextStream(stdout) << "FAILED: " << failure.Number() << ' ' << failure.Description()
                                << '\n';
            return 1;
        }
    }

    // Each tab works on a job of its own.
    Job first;
    Job second;
    QTabWidget window;
    window.setWindowTitle(QStringLiteral("Host form"));

    auto* byIdentifier = new QWidget;
    ZebSubCtl::UserControl* list = place(
        QStringLiteral("ZebSubmittalControls.ctlTextSelect"), "TextObjects",
        QVariant::fromValue(std::shared_ptr<ZebObjects::TextObjects>(first.remarks)), byIdentifier);
    list->setProperty("AllowUpdate", true);
    list->setProperty("AllowReorder", true);
    list->move(10, 10);
    ZebSubCtl::UserControl* panel = place(
        QStringLiteral("ZebSubmittalControls.ctlCustSelect"), "Customers",
        QVariant::fromValue(std::shared_ptr<ZebObjects::Customers>(first.customers)), byIdentifier);
    panel->setProperty("AllowAdd", true);
    panel->setProperty("AllowDelete", true);
    panel->move(list->geometry().right() + 10, 10);
    window.addTab(byIdentifier, QStringLiteral("By identifier"));

    auto* designed = new QWidget;
    Ui::DesignedForm ui;
    ui.setupUi(designed);
    ui.remarks->setTextObjects(second.remarks);
    ui.customers->setCustomers(second.customers);
    window.addTab(designed, QStringLiteral("From a form"));

    window.resize(1040, 480);
    const QStringList args = app.arguments();
    const qsizetype shot = args.indexOf(QStringLiteral("--screenshot"));
    if (shot > 0 && shot + 1 < args.size()) {
        const qsizetype tab = args.indexOf(QStringLiteral("--tab"));
        if (tab > 0 && tab + 1 < args.size())
            window.setCurrentIndex(args.at(tab + 1).toInt());
        window.show();
        QApplication::processEvents();
        return window.grab().save(args.at(shot + 1)) ? 0 : 1;
    }
    window.show();
    const int status = app.exec();
    ZebObjects::Runtime::setApplicationServices(nullptr);
    ZebObjects::Runtime::setDiagnosticLog(nullptr);
    return status;
}
