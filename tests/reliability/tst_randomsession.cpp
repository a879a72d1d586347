// A long session of random user actions on every control of one submittal, with real mouse and
// keyboard input on the real child widgets. A shadow model predicts every write from the rules
// of the controls; after each action the business objects must hold what the shadow says, and
// at checkpoints every control must show what its object holds.
//
// The session runs on the stand-alone objects and on the same submittal in a store (an SQLite
// file), so that the two implementations cannot drift apart: in the store every write must also
// be in the file, which a second connection reads back at every checkpoint.
//
// The seed is printed; ZEB_SEED=<seed> replays a session, ZEB_ACTIONS=<n> sets its length (the
// store's session is a fifth of it: each of its writes is a commit).

#include "shadowmodel.h"

#include "controls/criteria/ctlbomcriteria.h"
#include "controls/criteria/ctlcvrltrcriteria.h"
#include "controls/criteria/ctlgeneralinfo.h"
#include "controls/customers/ctlcustselect.h"
#include "controls/labels/ctllabelcriteria.h"
#include "controls/lineitems/ctlsubline.h"
#include "controls/lineitems/ctlsublinedsp.h"
#include "controls/textselect/ctltextselect.h"
#include "controls/textselect/frmedittext.h"
#include "objects/customerdirectory.h"
#include "contracts/runtime.h"
#include "objects/sampledata.h"
#include "objects/standaloneapplicationservices.h"
#include "objects/standalonebom.h"
#include "objects/standalonecoverletter.h"
#include "objects/standalonecustomers.h"
#include "objects/standalonelabelfield.h"
#include "objects/standalonelabelfields.h"
#include "objects/standalonelabels.h"
#include "objects/standalonelineitems.h"
#include "objects/standalonesubmittal.h"
#include "objects/standalonetextobjects.h"
#include "rules/textkind.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storebom.h"
#include "store/storecustomers.h"
#include "store/storejob.h"
#include "store/storelabels.h"
#include "store/storelineitems.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "platform/checkbox.h"
#include "platform/combobox.h"
#include "platform/dateedit.h"
#include "platform/keyedlistview.h"
#include "platform/multilinetextbox.h"
#include "platform/optionbutton.h"
#include "platform/optiongroup.h"
#include "platform/paintedlabel.h"
#include "platform/textbox.h"
#include "support/testsupport.h"
#include "controls/textselect/userinput.h"

#include <QDate>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>
#include <memory>

using namespace ZebSubCtl;
using namespace ZebObjects;
using ZebTest::ShadowParagraph;
using ZebTest::ShadowTexts;
using Shown = ZebSubCtl::ScriptedMessageBoxService::Shown;

namespace {

const QString kAddReformatted = QStringLiteral(
    "Your text contains unsupported characters and will be reformatted.\r\n"
    "Please review the paragraph to be certain you are satisfied with the new format\r\n"
    "before selecting add again.");
const QString kEditReformatted =
    QStringLiteral("Your text contains unsupported characters and will be reformatted.\r\n"
                   "Please review the text to be certain you are satisfied with the new format\r\n"
                   "and then select OK.");
const QString kTextFormat = QStringLiteral("Text Format");
const QString kDuplicate = QStringLiteral("The customer has already been added.");
const QString kRemoveAll = QStringLiteral("This will remove all customers from this submittal.");

const char* const kBomBoxes[] = {
    "chkBrand", "chkCatNum", "chkDefaultRemarks", "chkDesc", "chkGroupCode", "chkLineComments",
    "chkMfr",   "chkMTO",    "chkQuantity",       "chkType"};

const char* const kWords[] = {"Fixtures",  "ship",     "with",     "lamps",  "installed", "verify",
                              "voltage",   "before",   "ordering", "finish", "white",     "per",
                              "drawings",  "mounting", "height",   "3500K",  "driver",    "0-10V",
                              "emergency", "battery",  "pack",     "by",     "others",    "(typ.)"};

// Characters a word processor pastes, and what the business objects turn them into.
struct Pasted {
    QChar c;
    QChar becomes;
};
const Pasted kPasted[] = {{QChar(0x2013), QLatin1Char('-')},
                          {QChar(0x2014), QLatin1Char('-')},
                          {QChar(0x201C), QLatin1Char('"')},
                          {QChar(0x201D), QLatin1Char('"')},
                          {QChar(0x2019), QLatin1Char('\'')}};

QString asAccepted(QString text)
{
    for (const Pasted& p : kPasted)
        text.replace(p.c, p.becomes);
    return text;
}

// The calls of an object that change it, out of everything its injector recorded.
QStringList writesIn(const FaultInjector& faults)
{
    static const QStringList mutators = {QStringLiteral("Add"),
                                         QStringLiteral("Remove"),
                                         QStringLiteral("RemoveAll"),
                                         QStringLiteral("MoveUp"),
                                         QStringLiteral("MoveDown"),
                                         QStringLiteral("SaveOrder"),
                                         QStringLiteral("Insert"),
                                         QStringLiteral("SelectPurpose"),
                                         QStringLiteral("PopulateRemarks")};
    QStringList out;
    for (const QString& call : faults.calls())
        if (call.endsWith(QLatin1Char('=')) || mutators.contains(call))
            out.append(call);
    return out;
}

QString shownText(QString text)
{
    return text.replace(QStringLiteral("\r\n"), QStringLiteral("  "));
}

quint64 seedFromEnvironment()
{
    const QByteArray env = qgetenv("ZEB_SEED");
    if (!env.isEmpty()) {
        bool ok = false;
        const quint64 seed = env.toULongLong(&ok);
        if (ok)
            return seed;
        qFatal("ZEB_SEED is not a number: %s", env.constData());
    }
    return QRandomGenerator::system()->generate64();
}

int actionsFromEnvironment()
{
    bool ok = false;
    const int n = qEnvironmentVariableIntValue("ZEB_ACTIONS", &ok);
    return ok && n > 0 ? n : 10000;
}

// --- real input on list views

QPoint textPoint(KeyedListView* list, int row)
{
    const QRect item = list->itemRect(row);
    const int x = list->checkBoxes() ? list->checkBoxRect(row).right() + 40 : item.left() + 30;
    return QPoint(x, item.center().y());
}

bool rowInView(KeyedListView* list, int row)
{
    const QRect item = list->itemRect(row);
    return !item.isEmpty() && list->viewport()->rect().contains(item.topLeft())
           && list->viewport()->rect().contains(item.bottomLeft());
}

// Selects a row the way a user does: a click when it is in view, otherwise a click on the top
// row in view and the arrow keys down to it (which scrolls it into view).
void selectRow(KeyedListView* list, int row)
{
    if (rowInView(list, row)) {
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, textPoint(list, row));
        return;
    }
    const QModelIndex top = list->indexAt(QPoint(list->viewport()->width() / 2, 3));
    const int start = top.isValid() ? top.row() : 0;
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, textPoint(list, start));
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < row; ++i)
        QTest::keyClick(list, Qt::Key_Down);
}

void doubleClickRow(KeyedListView* list, int row)
{
    const QPoint at = textPoint(list, row);
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, at);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, at);
}

void tickRow(KeyedListView* list, int row)
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->checkBoxRect(row).center());
}

void click(QAbstractButton* button)
{
    if (qobject_cast<QCheckBox*>(button) || qobject_cast<QRadioButton*>(button))
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(7, button->height() / 2));
    else
        QTest::mouseClick(button, Qt::LeftButton);
}

void chooseFromMenu(KeyedListView* list, int row, Qt::Key accessKey)
{
    ZebTest::WhenPopup popup([accessKey](QMenu& m) { QTest::keyClick(&m, accessKey); });
    QTest::mouseClick(list->viewport(), Qt::RightButton, {}, textPoint(list, row));
    if (!popup.answered())
        qFatal("the context menu did not open");
}

}  // namespace

class tst_RandomSession : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void randomUserSessionLosesNothing_data();
    void randomUserSessionLosesNothing();

private:
    // The business objects of one submittal.
    struct Objects {
        std::shared_ptr<TextObjects> paragraphs;
        std::shared_ptr<TextObjects> remarks;
        std::shared_ptr<Submittal> submittal;
        std::shared_ptr<BOM> bom;
        std::shared_ptr<Labels> labels;
        std::shared_ptr<LineItems> lines;
        std::shared_ptr<Customers> customers;
    };

    // Session set-up.
    void buildSession(bool inStore);
    void endSession();
    void takeShadowFromObjects();

    // Actions.
    void act();
    void textListAction(ctlTextSelect* control, ShadowTexts& s, bool mayUpdate);
    void generalInfoAction();
    void coverLetterAction();
    void bomAction();
    void labelAction();
    void lineItemAction();
    void customerAction();

    // Checks.
    void checkModel(const Objects& o, const QString& where);
    // What a second connection to the store's file reads: every write must be committed.
    void checkStoreFile(const QString& where);
    void checkWidgets(const QString& where);
    void checkTexts(TextObjects& objects, const ShadowTexts& s, const QString& where);
    void checkTextList(ctlTextSelect* control, const ShadowTexts& s, const QString& where);
    void fail(const QString& what);

    // Popup menus and dialogs take the activation with them on this platform; a user's next
    // click brings the window back to the front.
    void ensureActive()
    {
        if (QApplication::activeWindow() != m_window.get()) {
            m_window->activateWindow();
            if (!QTest::qWaitForWindowActive(m_window.get()))
                fail(QStringLiteral("the session window cannot be activated"));
        }
    }

    int pick(int n) { return int(m_random.bounded(quint32(n))); }
    bool chance(int percent) { return pick(100) < percent; }
    QString randomText(bool mayPaste);

    template <class T>
    T* child(QWidget* parent, const char* name)
    {
        T* w = parent->findChild<T*>(QLatin1String(name));
        if (!w)
            qFatal("no child %s", name);
        return w;
    }

    QRandomGenerator m_random;
    quint64 m_seed = 0;
    int m_step = 0;
    QString m_lastAction;
    bool m_failed = false;
    QString m_failure;
    QMap<QString, int> m_actionCounts;
    QMap<QString, qint64> m_actionMs;
    qint64 m_activationMs = 0;

    std::unique_ptr<ZebTest::Harness> m_h;
    std::shared_ptr<ApplicationServices> m_services;
    // The customer directory the finder searches.
    QList<StandaloneCustomer::Data> m_directory;
    // The store's file and the job the session runs on, in the store's session.
    std::unique_ptr<QTemporaryDir> m_dir;
    std::shared_ptr<Store> m_store;
    qint64 m_jobId = 0;
    std::shared_ptr<StoreJob> m_job;
    Objects m_objects;
    // Short names for m_objects' members.
    std::shared_ptr<TextObjects> m_paragraphs;
    std::shared_ptr<TextObjects> m_remarks;
    std::shared_ptr<Submittal> m_submittal;
    std::shared_ptr<BOM> m_bom;
    std::shared_ptr<Labels> m_labels;
    std::shared_ptr<LineItems> m_lines;
    std::shared_ptr<Customers> m_customers;

    std::unique_ptr<QWidget> m_window;
    ctlTextSelect* m_paragraphList = nullptr;
    ctlTextSelect* m_remarkList = nullptr;
    ctlGeneralInfo* m_info = nullptr;
    ctlCvrLtrCriteria* m_letter = nullptr;
    ctlBOMCriteria* m_bomPanel = nullptr;
    ctlLabelCriteria* m_labelPanel = nullptr;
    ctlSubLineDsp* m_viewer = nullptr;
    ctlCustSelect* m_customerPanel = nullptr;

    ZebTest::ShadowSession m_shadow;
    // The objects whose writes are counted, by the names the shadow uses.
    QMap<QString, const FaultInjector*> m_recorded;
    void write(const QString& object, const QString& member, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            m_shadow.writes[object].append(member);
    }
};

void tst_RandomSession::initTestCase()
{
    m_seed = seedFromEnvironment();
    m_random.seed(quint32(m_seed ^ (m_seed >> 32)));
    qInfo("random session seed: %llu (replay with ZEB_SEED=%llu)", (unsigned long long)m_seed,
          (unsigned long long)m_seed);
    m_h = std::make_unique<ZebTest::Harness>();
}

void tst_RandomSession::cleanupTestCase()
{
    endSession();
    m_h.reset();
}

void tst_RandomSession::endSession()
{
    m_window.reset();
    m_objects = Objects();
    m_paragraphs.reset();
    m_remarks.reset();
    m_submittal.reset();
    m_bom.reset();
    m_labels.reset();
    m_lines.reset();
    m_customers.reset();
    m_job.reset();
    Runtime::setApplicationServices(nullptr);
    m_services.reset();
    m_store.reset();
    m_dir.reset();
    m_recorded.clear();
    m_shadow = ZebTest::ShadowSession();
    m_actionCounts.clear();
    m_actionMs.clear();
    m_activationMs = 0;
    m_failed = false;
    m_failure.clear();
}

void tst_RandomSession::buildSession(bool inStore)
{
    if (inStore) {
        // The sample job of the office, in a file of its own.
        m_dir = std::make_unique<QTemporaryDir>();
        m_store = Store::open(m_dir->filePath(QStringLiteral("office.sqlite")));
        m_store->setIssuedByNames(SampleOffice::issuedByNames());
        m_store->addDirectoryCustomers(SampleOffice::directory());
        m_jobId = m_store->createJob(SampleOffice::riverside());
        m_job = m_store->openJob(m_jobId);
        m_services = m_store->applicationServices();
        m_directory = m_store->directoryCustomers();
        m_objects = {m_job->coverLetterParagraphs(),
                     m_job->coverLetterRemarks(),
                     m_job->submittal(),
                     m_job->bom(),
                     m_job->labels(),
                     m_job->lineItems(),
                     m_job->customers()};
    } else {
        auto services = std::make_shared<StandaloneApplicationServices>();
        m_directory = services->customerDirectory()->Records();
        m_services = services;
        m_objects = {SampleData::coverLetterParagraphs(),
                     SampleData::coverLetterRemarks(),
                     SampleData::submittal(),
                     SampleData::bom(),
                     SampleData::labels(),
                     SampleData::lineItems(),
                     SampleData::customers()};
    }
    Runtime::setApplicationServices(m_services);
    m_paragraphs = m_objects.paragraphs;
    m_remarks = m_objects.remarks;
    m_submittal = m_objects.submittal;
    m_bom = m_objects.bom;
    m_labels = m_objects.labels;
    m_lines = m_objects.lines;
    m_customers = m_objects.customers;

    m_window = std::make_unique<QWidget>();
    m_window->setObjectName(QStringLiteral("session"));
    m_window->resize(2200, 1500);

    m_paragraphList = new ctlTextSelect(m_window.get());
    m_remarkList = new ctlTextSelect(m_window.get());
    for (ctlTextSelect* list : {m_paragraphList, m_remarkList}) {
        list->setAllowUpdate(true);
        list->setAllowReorder(true);
        list->setAllowSave(true);
    }
    m_paragraphList->setGeometry(0, 0, 440, 560);
    m_remarkList->setGeometry(450, 0, 440, 560);
    m_info = new ctlGeneralInfo(m_window.get());
    m_info->move(900, 0);
    m_letter = new ctlCvrLtrCriteria(m_window.get());
    m_letter->move(900, 620);
    m_bomPanel = new ctlBOMCriteria(m_window.get());
    m_bomPanel->move(0, 580);
    m_labelPanel = new ctlLabelCriteria(m_window.get());
    m_labelPanel->move(0, 1000);
    m_viewer = new ctlSubLineDsp(m_window.get());
    // Tall enough to show all twenty lines at once.
    m_viewer->setGeometry(1560, 0, 620, 960);
    m_customerPanel = new ctlCustSelect(m_window.get());
    m_customerPanel->setAllowAdd(true);
    m_customerPanel->setAllowDelete(true);
    m_customerPanel->setShowCheckboxes(true);
    m_customerPanel->setGeometry(1000, 1000, 1150, 480);

    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get()))
        qFatal("session window not exposed");
    m_window->activateWindow();
    if (!QTest::qWaitForWindowActive(m_window.get()))
        qFatal("session window not active");

    m_paragraphList->setTextObjects(m_paragraphs);
    m_remarkList->setTextObjects(m_remarks);
    m_info->setCriteria(m_submittal);
    m_letter->setSubmittal(m_submittal);
    m_bomPanel->setBOM(m_bom);
    m_labelPanel->setLabels(m_labels);
    m_viewer->setLineItems(m_lines);
    m_customerPanel->setCustomers(m_customers);
    QCoreApplication::processEvents();

    takeShadowFromObjects();
    // The stand-alone objects record the calls made on them: their writes are compared with
    // the shadow's one by one. The store's are checked by what they hold and what its file holds.
    if (!inStore) {
        const auto faults = [](const auto& object) -> const FaultInjector* {
            return &dynamic_cast<const FaultInjectable&>(*object).faults();
        };
        m_recorded = {
            {QStringLiteral("paragraphs"), faults(m_paragraphs)},
            {QStringLiteral("remarks"), faults(m_remarks)},
            {QStringLiteral("BOM remarks"), faults(m_bom->DefaultRemarks())},
            {QStringLiteral("submittal"), faults(m_submittal)},
            {QStringLiteral("cover letter"), faults(m_submittal->CoverLetter())},
            {QStringLiteral("bill of materials"), faults(m_bom)},
            {QStringLiteral("customers"), faults(m_customers)},
        };
    }
    for (const FaultInjector* faults : std::as_const(m_recorded))
        const_cast<FaultInjector*>(faults)->setRecording(true);
    m_h->log().clear();
    m_h->boxes().clear();
}

// The session starts from what the objects hold once every control is bound (binding itself is
// each control's own test's business).
void tst_RandomSession::takeShadowFromObjects()
{
    const auto texts = [](TextObjects& objects, const QString& name, bool allowSave) {
        ShadowTexts s;
        s.name = name;
        s.allowSave = allowSave;
        s.dirty = objects.IsDirty();
        for (const auto& o : objects.Enumerate())
            s.items.append({o->Text(), o->Selected()});
        return s;
    };
    m_shadow.paragraphs = texts(*m_paragraphs, QStringLiteral("paragraphs"), true);
    m_shadow.remarks = texts(*m_remarks, QStringLiteral("remarks"), true);
    m_shadow.bomRemarks = texts(*m_bom->DefaultRemarks(), QStringLiteral("BOM remarks"), false);

    auto& s = m_shadow.submittal;
    s.includeCoverLetter = m_submittal->IncludeCoverLetter();
    s.includeBOM = m_submittal->IncludeBOM();
    s.includeLabels = m_submittal->IncludeLabels();
    s.issuedBy = m_submittal->IssuedBy();
    s.date = m_submittal->SubmittalDate();
    s.purposeIndex = m_submittal->SubmittalPurposeIndex();
    s.purpose = m_submittal->SubmittalPurpose();
    s.otherPurpose = QString();
    const auto letter = m_submittal->CoverLetter();
    s.logo = letter->IncludeLogo();
    s.paragraphs = letter->IncludeDefaultParagraphs();
    s.remarks = letter->IncludeRemarks();
    s.separate = letter->SeparateLetters();
    s.carbonCopy = letter->IncludeCarbonCopy();
    s.carbonCopyShown = child<CheckBox>(m_letter, "chkIncludeCC")->isVisibleTo(m_letter);

    const QList<bool> flags = {m_bom->IncludeBrand(),          m_bom->IncludeCatalogNumber(),
                               m_bom->IncludeDefaultRemarks(), m_bom->IncludeDescription(),
                               m_bom->IncludeGroupCodes(),     m_bom->IncludeLineComments(),
                               m_bom->IncludeManufacturer(),   m_bom->IncludeMTO(),
                               m_bom->IncludeQuantity(),       m_bom->IncludeType()};
    for (int i = 0; i < 10; ++i)
        m_shadow.bom[QLatin1String(kBomBoxes[i])] = flags.at(i);

    auto& l = m_shadow.labels;
    for (const auto& field : m_labels->LabelFields()->Enumerate()) {
        (field->Included() ? l.selected : l.available).append(field->Key());
        l.printOrder[field->Key()] = field->PrintOrder();
    }
    if (const auto alone = std::dynamic_pointer_cast<StandaloneLabels>(m_labels))
        l.maximum = alone->standaloneFields()->maximumIncluded();

    for (const auto& line : m_lines->Enumerate())
        m_shadow.lineSelected.append(line->Selected());

    for (const auto& c : m_customers->Enumerate())
        m_shadow.customers.rows.append({c->Key(), c->Included()});
}

QString tst_RandomSession::randomText(bool mayPaste)
{
    QStringList words;
    const int n = 1 + pick(4);
    for (int i = 0; i < n; ++i)
        words.append(QLatin1String(kWords[pick(int(std::size(kWords)))]));
    QString text = words.join(QLatin1Char(' '));
    if (mayPaste && chance(20)) {
        const Pasted& p = kPasted[pick(int(std::size(kPasted)))];
        text.insert(pick(int(text.size()) + 1), p.c);
    }
    return text;
}

void tst_RandomSession::fail(const QString& what)
{
    if (m_failed)
        return;
    m_failed = true;
    m_failure = QStringLiteral("seed %1, action %2 (%3): %4")
                    .arg(m_seed)
                    .arg(m_step)
                    .arg(m_lastAction, what);
}

// --- text lists

void tst_RandomSession::textListAction(ctlTextSelect* control, ShadowTexts& s, bool mayUpdate)
{
    auto* list = child<KeyedListView>(control, "ListView");
    const int count = int(s.items.size());
    // Keep the list within view: add less often as it grows.
    const int addWeight = !mayUpdate ? 0 : (count < 4 ? 30 : count > 12 ? 2 : 12);
    const int weights[] = {addWeight,
                           count ? 20 : 0,
                           count ? 16 : 0,
                           count ? 16 : 0,
                           mayUpdate && count ? 10 : 0,
                           mayUpdate && count > 3 ? 8 : 0,
                           s.saveKnown ? 8 : 0,
                           mayUpdate ? 4 : 0,
                           !mayUpdate && count ? 4 : 0};
    int total = 0;
    for (int w : weights)
        total += w;
    if (total == 0)
        return;
    int roll = pick(total);
    int kind = 0;
    while (roll >= weights[kind])
        roll -= weights[kind++];

    const auto changed = [&] { s.saveKnown = true; };
    switch (kind) {
    case 0: {  // type a paragraph, perhaps tick it, and add it
        m_lastAction = s.name + QStringLiteral(": add");
        auto* entry = child<MultiLineTextBox>(control, "txtNewComment");
        auto* tick = child<CheckBox>(control, "chkIsSelected");
        const QString typed = randomText(true);
        QTest::mouseClick(entry->viewport(), Qt::LeftButton);
        ZebTest::typeText(entry, typed);
        const bool ticked = chance(40);
        if (ticked)
            click(tick);
        click(child<QPushButton>(control, "cmdAdd"));
        const QString accepted = asAccepted(typed);
        if (accepted != typed) {
            m_shadow.boxes.append(Shown{kAddReformatted, 64, kTextFormat});
            if (entry->text() != accepted)
                fail(QStringLiteral("the entry box shows \"%1\" after reformatting, not \"%2\"")
                         .arg(entry->text(), accepted));
            if (chance(25)) {
                click(child<QPushButton>(control, "cmdCancel"));
                break;
            }
            click(child<QPushButton>(control, "cmdAdd"));
        }
        write(s.name, QStringLiteral("Add"));
        s.items.append({accepted, ticked});
        changed();
        if (!entry->text().isEmpty() || tick->value() != 0)
            fail(QStringLiteral("the entry fields are not cleared after Add"));
        break;
    }
    case 1: {  // tick or untick a paragraph
        const int row = pick(count);
        m_lastAction = s.name + QStringLiteral(": tick row %1").arg(row);
        selectRow(list, row);
        tickRow(list, row);
        s.items[row].selected = !s.items[row].selected;
        break;
    }
    case 2:
    case 3: {  // move up or down, with the button or the menu
        const bool up = kind == 2;
        const int row = pick(count);
        const bool menu = chance(30);
        m_lastAction = s.name
                       + QStringLiteral(": move row %1 %2 by %3")
                             .arg(row)
                             .arg(up ? QStringLiteral("up") : QStringLiteral("down"),
                                  menu ? QStringLiteral("menu") : QStringLiteral("button"));
        selectRow(list, row);
        if (menu)
            chooseFromMenu(list, row, up ? Qt::Key_U : Qt::Key_N);
        else
            click(child<QPushButton>(control, up ? "cmdMoveUp" : "cmdMoveDown"));
        const int to = up ? row - 1 : row + 1;
        // The collection decides what a move past an end does: it is asked all the same.
        write(s.name, up ? QStringLiteral("MoveUp") : QStringLiteral("MoveDown"));
        if (to >= 0 && to < count) {
            s.items.swapItemsAt(row, to);
            s.dirty = true;
            changed();
            if (list->selectedRow() != to)
                fail(QStringLiteral("the moved paragraph is not selected (row %1, not %2)")
                         .arg(list->selectedRow())
                         .arg(to));
        }
        break;
    }
    case 4: {  // edit through the dialog: double click, Enter or the menu
        const int row = pick(count);
        const int how = pick(3);
        const bool ok = chance(75);
        const QString typed = randomText(true);
        const QString accepted = asAccepted(typed);
        m_lastAction = s.name
                       + QStringLiteral(": edit row %1 (%2, %3)")
                             .arg(row)
                             .arg(how)
                             .arg(ok ? QStringLiteral("OK") : QStringLiteral("Cancel"));
        selectRow(list, row);
        bool reformatted = false;
        ZebTest::WhenModal<frmEditText> user([&](frmEditText& dialog) {
            auto* box = dialog.findChild<MultiLineTextBox*>(QStringLiteral("txtText"));
            QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
            ZebTest::typeText(box, typed);
            auto* button = dialog.findChild<QPushButton*>(ok ? QStringLiteral("cmdOK")
                                                             : QStringLiteral("cmdCancel"));
            QTest::mouseClick(button, Qt::LeftButton);
            if (ok && dialog.isVisible()) {
                reformatted = true;
                if (box->text() != accepted)
                    fail(QStringLiteral("the dialog shows \"%1\" after reformatting")
                             .arg(box->text()));
                QTest::mouseClick(button, Qt::LeftButton);
            }
        });
        if (how == 0)
            doubleClickRow(list, row);
        else if (how == 1)
            QTest::keyClick(list, Qt::Key_Return);
        else
            chooseFromMenu(list, row, Qt::Key_E);
        if (!user.answered() || user.leftOpen())
            fail(QStringLiteral("the edit dialog was not answered as scripted"));
        if (ok) {
            if (accepted != typed) {
                m_shadow.boxes.append(Shown{kEditReformatted, 64, kTextFormat});
                if (!reformatted)
                    fail(QStringLiteral("the dialog closed on text it had to reformat"));
            }
            s.items[row].text = accepted;
        }
        break;
    }
    case 5: {  // delete through the menu
        const int row = pick(count);
        m_lastAction = s.name + QStringLiteral(": delete row %1").arg(row);
        selectRow(list, row);
        chooseFromMenu(list, row, Qt::Key_D);
        write(s.name, QStringLiteral("Remove"));
        s.items.removeAt(row);
        changed();
        break;
    }
    case 6: {  // Save Changes (a click on a disabled button does nothing)
        m_lastAction = s.name + QStringLiteral(": save");
        auto* save = child<QPushButton>(control, "cmdSave");
        const bool enabled = s.allowSave && s.dirty;
        if (save->isEnabled() != enabled)
            fail(QStringLiteral("Save Changes is %1")
                     .arg(save->isEnabled() ? "enabled" : "disabled"));
        click(save);
        if (enabled) {
            write(s.name, QStringLiteral("SaveOrder"));
            s.dirty = false;
            changed();
        }
        break;
    }
    case 7: {  // type and cancel
        m_lastAction = s.name + QStringLiteral(": type and cancel");
        auto* entry = child<MultiLineTextBox>(control, "txtNewComment");
        QTest::mouseClick(entry->viewport(), Qt::LeftButton);
        ZebTest::typeText(entry, randomText(false));
        click(child<QPushButton>(control, "cmdCancel"));
        if (!entry->text().isEmpty())
            fail(QStringLiteral("Cancel left text in the entry box"));
        break;
    }
    case 8: {  // a list without updates ignores double clicks and Enter
        const int row = pick(count);
        m_lastAction = s.name + QStringLiteral(": double click row %1 without updates").arg(row);
        selectRow(list, row);
        doubleClickRow(list, row);
        QTest::keyClick(list, Qt::Key_Return);
        if (QApplication::activeModalWidget())
            fail(QStringLiteral("a dialog opened on a list without updates"));
        break;
    }
    }
}

// --- general information and cover letter

void tst_RandomSession::generalInfoAction()
{
    auto& s = m_shadow.submittal;
    const int kind = pick(10);
    if (kind < 3) {
        const char* names[] = {"chkCoverLetter", "chkBOM", "chkLabels"};
        m_lastAction = QStringLiteral("general information: click %1").arg(names[kind]);
        click(child<CheckBox>(m_info, names[kind]));
        bool& flag = kind == 0 ? s.includeCoverLetter : kind == 1 ? s.includeBOM : s.includeLabels;
        flag = !flag;
        // One write; the object's event finds box and flag equal and writes nothing more.
        write(QStringLiteral("submittal"), kind == 0   ? QStringLiteral("IncludeCoverLetter=")
                                           : kind == 1 ? QStringLiteral("IncludeBOM=")
                                                       : QStringLiteral("IncludeLabels="));
    } else if (kind < 6) {
        const int index = chance(30) ? 7 : pick(8);
        m_lastAction = QStringLiteral("general information: purpose %1").arg(index);
        auto* group = child<OptionGroup>(m_info, "optSubmittalPurpose");
        click(group->button(index));
        if (index != s.purposeIndex) {
            write(QStringLiteral("submittal"), QStringLiteral("SelectPurpose"));
            write(QStringLiteral("submittal"), QStringLiteral("SubmittalPurpose="));
            s.purposeIndex = qint16(index);
            s.purpose =
                index == 7 ? s.otherPurpose : StandaloneSubmittal::purposeCaptions().at(index);
        }
    } else if (kind == 6) {
        if (s.purposeIndex != 7)
            return;
        auto* other = child<TextBox>(m_info, "txtPurposeOther");
        const bool erase = !s.otherPurpose.isEmpty() && chance(30);
        m_lastAction = QStringLiteral("general information: %1 the purpose of one's own")
                           .arg(erase ? "shorten" : "type");
        if (erase) {
            QTest::keyClick(other, Qt::Key_End);
            QTest::keyClick(other, Qt::Key_Backspace);
            s.otherPurpose.chop(1);
            // Every key released writes the box's text, End included.
            write(QStringLiteral("submittal"), QStringLiteral("SubmittalPurpose="), 2);
        } else {
            QTest::keyClick(other, Qt::Key_End);
            const QString typed = QLatin1String(kWords[pick(int(std::size(kWords)))]);
            QTest::keyClicks(other, QLatin1Char(' ') + typed);
            s.otherPurpose += QLatin1Char(' ') + typed;
            write(QStringLiteral("submittal"), QStringLiteral("SubmittalPurpose="),
                  2 + int(typed.size()));
        }
        s.purpose = s.otherPurpose;
    } else if (kind < 9) {
        const QStringList names = {QStringLiteral("Dana Whitfield"), QStringLiteral("Lee Park"),
                                   QStringLiteral("R. Okonkwo"), QStringLiteral("Sam")};
        const QString name = names.at(pick(int(names.size())));
        m_lastAction = QStringLiteral("general information: issued by \"%1\"").arg(name);
        auto* edit = child<ComboBox>(m_info, "cmbIssuedBy")->lineEdit();
        QTest::mouseClick(edit, Qt::LeftButton);
        QTest::keyClick(edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit, name);
        // Each typed character changes the text and writes it.
        write(QStringLiteral("submittal"), QStringLiteral("IssuedBy="), int(name.size()));
        s.issuedBy = name;
    } else {
        auto* date = child<DateEdit>(m_info, "pvdIssueDate");
        const bool clear = chance(20);
        ensureActive();
        date->setFocus(Qt::MouseFocusReason);
        if (!QTest::qWaitFor([&] { return date->lineEdit()->hasFocus(); }, 1000)) {
            fail(QStringLiteral("the date editor does not take the focus"));
            return;
        }
        if (clear) {
            m_lastAction = QStringLiteral("general information: clear the date");
            QTest::keyClick(date->lineEdit(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(date->lineEdit(), Qt::Key_Delete);
            s.date.clear();
        } else {
            const QDate d = QDate(2026, 1, 1).addDays(pick(730));
            m_lastAction =
                QStringLiteral("general information: date %1").arg(d.toString(Qt::ISODate));
            QTest::keyClick(date->lineEdit(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(date->lineEdit(), d.toString(QStringLiteral("MM/dd/yyyy")));
            QTest::keyClick(date->lineEdit(), Qt::Key_Return);
            s.date = d.toString(Qt::ISODate);
        }
        QTest::keyClick(date->lineEdit(), Qt::Key_Tab);
        // The date is written once, when the editor is left.
        write(QStringLiteral("submittal"), QStringLiteral("SubmittalDate="));
    }
}

void tst_RandomSession::coverLetterAction()
{
    auto& s = m_shadow.submittal;
    const int kind = pick(6);
    if (kind < 3) {
        const char* names[] = {"chkDefaultParagraph", "chkIncludeLogo", "chkRemarks"};
        m_lastAction = QStringLiteral("cover letter: click %1").arg(names[kind]);
        click(child<CheckBox>(m_letter, names[kind]));
        bool& flag = kind == 0 ? s.paragraphs : kind == 1 ? s.logo : s.remarks;
        flag = !flag;
        write(QStringLiteral("cover letter"), kind == 0
                                                  ? QStringLiteral("IncludeDefaultParagraphs=")
                                              : kind == 1 ? QStringLiteral("IncludeLogo=")
                                                          : QStringLiteral("IncludeRemarks="));
    } else if (kind == 3) {
        m_lastAction = QStringLiteral("cover letter: same letter for all");
        click(child<OptionButton>(m_letter, "optOneCoverLetter"));
        if (s.separate) {
            write(QStringLiteral("cover letter"), QStringLiteral("SeparateLetters="));
            s.separate = false;
            s.carbonCopyShown = false;
        }
    } else if (kind == 4) {
        m_lastAction = QStringLiteral("cover letter: separate letters");
        click(child<OptionButton>(m_letter, "optMultipleCoverLetters"));
        // Becoming selected writes the option's value twice; a click on it when it is selected
        // writes nothing.
        if (!s.separate)
            write(QStringLiteral("cover letter"), QStringLiteral("SeparateLetters="), 2);
        s.separate = true;
    } else {
        auto* cc = child<CheckBox>(m_letter, "chkIncludeCC");
        if (!cc->isVisible())
            return;
        // The panel never writes the carbon copy option.
        m_lastAction = QStringLiteral("cover letter: click the carbon copy box");
        click(cc);
    }
}

// --- bill of materials

void tst_RandomSession::bomAction()
{
    auto* remarks = child<ctlTextSelect>(m_bomPanel, "ctlTextSelect");
    if (remarks->isVisible() && chance(35)) {
        textListAction(remarks, m_shadow.bomRemarks, false);
        return;
    }
    const char* name = kBomBoxes[pick(10)];
    m_lastAction = QStringLiteral("bill of materials: click %1").arg(name);
    click(child<CheckBox>(m_bomPanel, name));
    bool& flag = m_shadow.bom[QLatin1String(name)];
    flag = !flag;
    static const QMap<QString, QString> members = {
        {QStringLiteral("chkBrand"), QStringLiteral("IncludeBrand=")},
        {QStringLiteral("chkCatNum"), QStringLiteral("IncludeCatalogNumber=")},
        {QStringLiteral("chkDefaultRemarks"), QStringLiteral("IncludeDefaultRemarks=")},
        {QStringLiteral("chkDesc"), QStringLiteral("IncludeDescription=")},
        {QStringLiteral("chkGroupCode"), QStringLiteral("IncludeGroupCodes=")},
        {QStringLiteral("chkLineComments"), QStringLiteral("IncludeLineComments=")},
        {QStringLiteral("chkMfr"), QStringLiteral("IncludeManufacturer=")},
        {QStringLiteral("chkMTO"), QStringLiteral("IncludeMTO=")},
        {QStringLiteral("chkQuantity"), QStringLiteral("IncludeQuantity=")},
        {QStringLiteral("chkType"), QStringLiteral("IncludeType=")}};
    write(QStringLiteral("bill of materials"), members.value(QLatin1String(name)));
    // "Default Remarks" binds the remarks list to the collection again, which hands the
    // collection the list's text kind.
    if (qstrcmp(name, "chkDefaultRemarks") == 0)
        write(QStringLiteral("BOM remarks"), QStringLiteral("TextObjectType="));
}

// --- labels

void tst_RandomSession::labelAction()
{
    auto& l = m_shadow.labels;
    auto* available = child<KeyedListView>(m_labelPanel, "lsvAvailableItems");
    auto* selected = child<KeyedListView>(m_labelPanel, "lsvSelectedItems");
    const bool add = l.selected.isEmpty() || (!l.available.isEmpty() && chance(50));
    KeyedListView* list = add ? available : selected;
    QStringList& from = add ? l.available : l.selected;
    if (from.isEmpty())
        return;
    const int row = pick(int(from.size()));
    const int how = pick(3);
    m_lastAction = QStringLiteral("labels: %1 row %2 by %3")
                       .arg(add ? "add" : "remove")
                       .arg(row)
                       .arg(how == 0   ? "button"
                            : how == 1 ? "double click"
                                       : "Enter");
    selectRow(list, row);
    if (how == 0)
        click(child<QPushButton>(m_labelPanel, add ? "cmdAdd" : "cmdRemove"));
    else if (how == 1)
        doubleClickRow(list, row);
    else
        QTest::keyClick(list, Qt::Key_Return);

    const QString key = from.at(row);
    if (add) {
        if (l.selected.size() < l.maximum) {
            l.available.removeAt(row);
            l.selected.append(key);
            l.printOrder[key] = qint16(l.selected.size());
        }
    } else {
        l.selected.removeAt(row);
        l.available.append(key);
        l.printOrder[key] = 0;
        for (int i = 0; i < l.selected.size(); ++i)
            l.printOrder[l.selected.at(i)] = qint16(i + 1);
    }
}

// --- line items

void tst_RandomSession::lineItemAction()
{
    const int n = int(m_shadow.lineSelected.size());
    const int row = pick(n);
    m_lastAction = QStringLiteral("line items: click line %1").arg(row + 1);
    for (ctlSubLine* line : m_viewer->findChildren<ctlSubLine*>()) {
        if (line->Index() == row + 1) {
            click(child<CheckBox>(line, "chkSelect"));
            m_shadow.lineSelected[row] = !m_shadow.lineSelected[row];
            return;
        }
    }
    fail(QStringLiteral("no row for line %1").arg(row + 1));
}

// --- customers

void tst_RandomSession::customerAction()
{
    auto& c = m_shadow.customers;
    auto* list = child<KeyedListView>(m_customerPanel, "lsvCustomers");
    const int count = int(c.rows.size());
    const int kind = pick(count ? 10 : 4);
    if (kind < 2) {  // search by account number
        const auto& records = m_directory;
        QString account = QStringLiteral("999999");
        if (chance(85))
            account = records.at(pick(int(records.size()))).accountNumber;
        QList<StandaloneCustomer::Data> matches;
        for (const auto& r : records)
            if (r.active && r.accountNumber == account)
                matches.append(r);
        if (matches.size() > 1)
            return;  // the chooser is the finder's, not the panel's
        m_lastAction = QStringLiteral("customers: search account %1").arg(account);
        click(child<QPushButton>(m_customerPanel, "cmdClear"));
        auto* accountBox = child<QLineEdit>(m_customerPanel, "txtAcctNum");
        QTest::mouseClick(accountBox, Qt::LeftButton);
        QTest::keyClicks(accountBox, account);
        click(child<QPushButton>(m_customerPanel, "cmdSearch"));
        if (matches.size() == 1)
            c.found = matches.first();
        auto* keyword = child<QLineEdit>(m_customerPanel, "txtNameKeyword");
        if (c.found
            && (keyword->text() != c.found->name || accountBox->text() != c.found->accountNumber))
            fail(QStringLiteral("the search boxes do not show the found customer"));
    } else if (kind < 4) {  // add the found customer
        m_lastAction = QStringLiteral("customers: add %1")
                           .arg(c.found ? c.found->key : QStringLiteral("nobody"));
        click(child<QPushButton>(m_customerPanel, "cmdAdd"));
        if (!c.found)
            return;
        write(QStringLiteral("customers"), QStringLiteral("Add"));
        const bool held = std::any_of(c.rows.begin(), c.rows.end(),
                                      [&](const auto& r) { return r.key == c.found->key; });
        if (held) {
            m_shadow.boxes.append(Shown{kDuplicate, 64, QStringLiteral("Duplicate Customer")});
            m_shadow.failures.append(QStringLiteral("ctlCustSelect|457"));
        } else {
            c.rows.append({c.found->key, true});
            c.found.reset();
        }
    } else if (kind < 7) {  // tick
        const int row = pick(count);
        m_lastAction = QStringLiteral("customers: tick row %1").arg(row);
        selectRow(list, row);
        tickRow(list, row);
        c.rows[row].included = !c.rows[row].included;
    } else if (kind < 9) {  // remove
        const int row = pick(count);
        m_lastAction = QStringLiteral("customers: remove row %1").arg(row);
        selectRow(list, row);
        click(child<QPushButton>(m_customerPanel, "cmdRemove"));
        write(QStringLiteral("customers"), QStringLiteral("Remove"));
        c.rows.removeAt(row);
    } else {  // remove all, answering the question
        const int row = pick(count);
        const bool ok = chance(40);
        m_lastAction = QStringLiteral("customers: remove all, answer %1").arg(ok ? "OK" : "Cancel");
        selectRow(list, row);
        m_h->boxes().queueAnswer(ok ? MsgBoxAnswer::OK : MsgBoxAnswer::Cancel);
        click(child<QPushButton>(m_customerPanel, "cmdRemoveAll"));
        m_shadow.boxes.append(Shown{kRemoveAll, 33, QStringLiteral("Are you sure?")});
        if (ok) {
            write(QStringLiteral("customers"), QStringLiteral("RemoveAll"));
            c.rows.clear();
        }
    }
}

// --- the session

void tst_RandomSession::act()
{
    m_lastAction.clear();
    QElapsedTimer actionTimer;
    actionTimer.start();
    ensureActive();
    m_activationMs += actionTimer.elapsed();
    // A pick that does not apply right now (typing one's own purpose while another purpose is
    // chosen, say) does nothing; pick again, so that every step is a user action.
    for (int tries = 0; tries < 50 && m_lastAction.isEmpty() && !m_failed; ++tries) {
        switch (pick(9)) {
        case 0: textListAction(m_paragraphList, m_shadow.paragraphs, true); break;
        case 1: textListAction(m_remarkList, m_shadow.remarks, true); break;
        case 2: generalInfoAction(); break;
        case 3: coverLetterAction(); break;
        case 4: bomAction(); break;
        case 5: labelAction(); break;
        case 6: lineItemAction(); break;
        default: customerAction(); break;
        }
    }
    if (!m_lastAction.isEmpty()) {
        // Counted by kind: rows, names and dates left out.
        static const QRegularExpression details(
            QStringLiteral("( row \\d+| line \\d+| \\d{4}-\\d\\d-\\d\\d| account \\d+| \"[^\"]*\"| "
                           "C\\d+| \\d+$)"));
        QString kind = m_lastAction;
        kind.remove(details);
        ++m_actionCounts[kind];
        m_actionMs[kind] += actionTimer.elapsed();
    }
}

void tst_RandomSession::checkTexts(TextObjects& objects, const ShadowTexts& s, const QString& where)
{
    QList<ShadowParagraph> held;
    for (const auto& o : objects.Enumerate())
        held.append({o->Text(), o->Selected()});
    if (held != s.items) {
        QStringList a, b;
        for (const auto& p : held)
            a.append(QStringLiteral("%1%2").arg(p.selected ? "[x] " : "[ ] ", p.text));
        for (const auto& p : s.items)
            b.append(QStringLiteral("%1%2").arg(p.selected ? "[x] " : "[ ] ", p.text));
        fail(QStringLiteral("%1: %2 hold\n  %3\nbut the shadow predicts\n  %4")
                 .arg(where, s.name, a.join(QStringLiteral("\n  ")),
                      b.join(QStringLiteral("\n  "))));
    }
    if (objects.IsDirty() != s.dirty)
        fail(QStringLiteral("%1: %2 IsDirty is %3").arg(where, s.name).arg(objects.IsDirty()));
}

void tst_RandomSession::checkModel(const Objects& o, const QString& where)
{
    checkTexts(*o.paragraphs, m_shadow.paragraphs, where);
    checkTexts(*o.remarks, m_shadow.remarks, where);
    checkTexts(*o.bom->DefaultRemarks(), m_shadow.bomRemarks, where);

    const auto& s = m_shadow.submittal;
    const auto letter = o.submittal->CoverLetter();
    const auto expect = [&](const char* what, const QVariant& held, const QVariant& predicted) {
        if (held != predicted)
            fail(QStringLiteral("%1: %2 is %3, the shadow predicts %4")
                     .arg(where, QLatin1String(what), held.toString(), predicted.toString()));
    };
    expect("IncludeCoverLetter", o.submittal->IncludeCoverLetter(), s.includeCoverLetter);
    expect("IncludeBOM", o.submittal->IncludeBOM(), s.includeBOM);
    expect("IncludeLabels", o.submittal->IncludeLabels(), s.includeLabels);
    expect("IssuedBy", o.submittal->IssuedBy(), s.issuedBy);
    expect("SubmittalDate", o.submittal->SubmittalDate(), s.date);
    expect("SubmittalPurposeIndex", o.submittal->SubmittalPurposeIndex(), s.purposeIndex);
    expect("SubmittalPurpose", o.submittal->SubmittalPurpose(), s.purpose);
    expect("IncludeLogo", letter->IncludeLogo(), s.logo);
    expect("IncludeDefaultParagraphs", letter->IncludeDefaultParagraphs(), s.paragraphs);
    expect("IncludeRemarks", letter->IncludeRemarks(), s.remarks);
    expect("SeparateLetters", letter->SeparateLetters(), s.separate);
    expect("IncludeCarbonCopy", letter->IncludeCarbonCopy(), s.carbonCopy);

    const QList<bool> flags = {o.bom->IncludeBrand(),          o.bom->IncludeCatalogNumber(),
                               o.bom->IncludeDefaultRemarks(), o.bom->IncludeDescription(),
                               o.bom->IncludeGroupCodes(),     o.bom->IncludeLineComments(),
                               o.bom->IncludeManufacturer(),   o.bom->IncludeMTO(),
                               o.bom->IncludeQuantity(),       o.bom->IncludeType()};
    for (int i = 0; i < 10; ++i)
        expect(kBomBoxes[i], flags.at(i), m_shadow.bom.value(QLatin1String(kBomBoxes[i])));

    for (auto it = m_shadow.labels.printOrder.cbegin(); it != m_shadow.labels.printOrder.cend();
         ++it) {
        const auto field = o.labels->LabelFields()->Item(it.key());
        if (field->PrintOrder() != it.value() || field->Included() != (it.value() != 0))
            fail(QStringLiteral("%1: label field %2 has print order %3, the shadow predicts %4")
                     .arg(where, it.key())
                     .arg(field->PrintOrder())
                     .arg(it.value()));
    }

    for (int i = 0; i < m_shadow.lineSelected.size(); ++i)
        if (o.lines->Item(qint16(i + 1))->Selected() != m_shadow.lineSelected.at(i))
            fail(QStringLiteral("%1: line %2 Selected is wrong").arg(where).arg(i + 1));

    QList<ZebTest::ShadowCustomer> held;
    for (const auto& c : o.customers->Enumerate())
        held.append({c->Key(), c->Included()});
    if (held != m_shadow.customers.rows) {
        const auto show = [](const QList<ZebTest::ShadowCustomer>& rows) {
            QStringList out;
            for (const auto& r : rows)
                out.append(QStringLiteral("%1%2").arg(r.included ? "[x] " : "[ ] ", r.key));
            return out.join(QStringLiteral(", "));
        };
        fail(QStringLiteral("%1: the customers are %2, the shadow predicts %3")
                 .arg(where, show(held), show(m_shadow.customers.rows)));
    }
}

void tst_RandomSession::checkStoreFile(const QString& where)
{
    if (!m_store)
        return;
    const auto again = Store::open(m_store->path(), Store::OpenMode::OpenExisting);
    const auto job = again->openJob(m_jobId);
    checkModel({job->coverLetterParagraphs(), job->coverLetterRemarks(), job->submittal(),
                job->bom(), job->labels(), job->lineItems(), job->customers()},
               where + QStringLiteral(", read again from the file"));
}

void tst_RandomSession::checkTextList(ctlTextSelect* control, const ShadowTexts& s,
                                      const QString& where)
{
    auto* list = child<KeyedListView>(control, "ListView");
    if (list->count() != s.items.size()) {
        fail(QStringLiteral("%1: the %2 list shows %3 items, not %4")
                 .arg(where, s.name)
                 .arg(list->count())
                 .arg(s.items.size()));
        return;
    }
    for (int i = 0; i < list->count(); ++i)
        if (list->text(i) != shownText(s.items.at(i).text)
            || list->isChecked(i) != s.items.at(i).selected)
            fail(QStringLiteral("%1: the %2 list shows \"%3\" at row %4")
                     .arg(where, s.name, list->text(i))
                     .arg(i));
    if (s.saveKnown
        && child<QPushButton>(control, "cmdSave")->isEnabled() != (s.allowSave && s.dirty))
        fail(QStringLiteral("%1: Save Changes of the %2 list is wrong").arg(where, s.name));
}

void tst_RandomSession::checkWidgets(const QString& where)
{
    checkTextList(m_paragraphList, m_shadow.paragraphs, where);
    checkTextList(m_remarkList, m_shadow.remarks, where);
    auto* remarks = child<ctlTextSelect>(m_bomPanel, "ctlTextSelect");
    checkTextList(remarks, m_shadow.bomRemarks, where);
    if (remarks->isVisibleTo(m_bomPanel) != m_bom->IncludeDefaultRemarks())
        fail(QStringLiteral("%1: the remarks list is shown while not included").arg(where));

    const auto expect = [&](const QString& what, bool ok) {
        if (!ok)
            fail(QStringLiteral("%1: %2 does not show what its object holds").arg(where, what));
    };
    expect(QStringLiteral("chkCoverLetter"), child<CheckBox>(m_info, "chkCoverLetter")->value()
                                                 == (m_submittal->IncludeCoverLetter() ? 1 : 0));
    expect(QStringLiteral("chkBOM"),
           child<CheckBox>(m_info, "chkBOM")->value() == (m_submittal->IncludeBOM() ? 1 : 0));
    expect(QStringLiteral("chkLabels"),
           child<CheckBox>(m_info, "chkLabels")->value() == (m_submittal->IncludeLabels() ? 1 : 0));
    auto* group = child<OptionGroup>(m_info, "optSubmittalPurpose");
    expect(QStringLiteral("optSubmittalPurpose"),
           group->button(m_submittal->SubmittalPurposeIndex())->value());
    auto* other = child<TextBox>(m_info, "txtPurposeOther");
    if (m_submittal->SubmittalPurposeIndex() == 7)
        expect(QStringLiteral("txtPurposeOther"),
               other->isVisibleTo(m_info) && other->text() == m_submittal->SubmittalPurpose());
    else
        expect(QStringLiteral("txtPurposeOther (hidden)"), !other->isVisibleTo(m_info));
    expect(QStringLiteral("cmbIssuedBy"),
           child<ComboBox>(m_info, "cmbIssuedBy")->text() == m_submittal->IssuedBy());
    expect(QStringLiteral("pvdIssueDate"),
           child<DateEdit>(m_info, "pvdIssueDate")->isoText() == m_submittal->SubmittalDate());

    const auto letter = m_submittal->CoverLetter();
    expect(QStringLiteral("chkDefaultParagraph"),
           child<CheckBox>(m_letter, "chkDefaultParagraph")->value()
               == (letter->IncludeDefaultParagraphs() ? 1 : 0));
    expect(QStringLiteral("chkIncludeLogo"),
           child<CheckBox>(m_letter, "chkIncludeLogo")->value() == (letter->IncludeLogo() ? 1 : 0));
    expect(QStringLiteral("chkRemarks"),
           child<CheckBox>(m_letter, "chkRemarks")->value() == (letter->IncludeRemarks() ? 1 : 0));
    expect(QStringLiteral("optMultipleCoverLetters"),
           child<OptionButton>(m_letter, "optMultipleCoverLetters")->value()
                   == letter->SeparateLetters()
               && child<OptionButton>(m_letter, "optOneCoverLetter")->value()
                      == !letter->SeparateLetters());
    expect(QStringLiteral("chkIncludeCC"),
           child<CheckBox>(m_letter, "chkIncludeCC")->isVisibleTo(m_letter)
               == m_shadow.submittal.carbonCopyShown);

    const QList<bool> flags = {m_bom->IncludeBrand(),          m_bom->IncludeCatalogNumber(),
                               m_bom->IncludeDefaultRemarks(), m_bom->IncludeDescription(),
                               m_bom->IncludeGroupCodes(),     m_bom->IncludeLineComments(),
                               m_bom->IncludeManufacturer(),   m_bom->IncludeMTO(),
                               m_bom->IncludeQuantity(),       m_bom->IncludeType()};
    for (int i = 0; i < 10; ++i)
        expect(QLatin1String(kBomBoxes[i]),
               child<CheckBox>(m_bomPanel, kBomBoxes[i])->value() == (flags.at(i) ? 1 : 0));

    const auto keys = [](KeyedListView* list) {
        QStringList out;
        for (int i = 0; i < list->count(); ++i)
            out.append(list->key(i));
        return out;
    };
    expect(QStringLiteral("lsvAvailableItems"),
           keys(child<KeyedListView>(m_labelPanel, "lsvAvailableItems"))
               == m_shadow.labels.available);
    expect(QStringLiteral("lsvSelectedItems"),
           keys(child<KeyedListView>(m_labelPanel, "lsvSelectedItems"))
               == m_shadow.labels.selected);
    for (const QString& key : m_shadow.labels.selected)
        expect(QStringLiteral("label field ") + key,
               m_labels->LabelFields()->Item(key)->Included());

    int rows = 0;
    for (ctlSubLine* line : m_viewer->findChildren<ctlSubLine*>()) {
        ++rows;
        const qint16 index = line->Index();
        const auto item = m_lines->Item(index);
        expect(QStringLiteral("line %1").arg(index),
               line->LineNumber() == QString::number(index)
                   && child<CheckBox>(line, "chkSelect")->value() == (item->Selected() ? 1 : 0)
                   && child<PaintedLabel>(line, "lblCatNum")->Caption() == item->CatalogNumber());
    }
    expect(QStringLiteral("the line rows"), rows == m_lines->Count());

    auto* customers = child<KeyedListView>(m_customerPanel, "lsvCustomers");
    bool same = customers->count() == m_customers->Count();
    for (int i = 0; same && i < customers->count(); ++i)
        same = customers->key(i) == m_customers->Item(qint16(i + 1))->Key()
               && customers->isChecked(i) == m_customers->Item(qint16(i + 1))->Included();
    expect(QStringLiteral("lsvCustomers"), same);
}

void tst_RandomSession::randomUserSessionLosesNothing_data()
{
    QTest::addColumn<bool>("inStore");
    QTest::newRow("stand-alone") << false;
    QTest::newRow("store") << true;
}

void tst_RandomSession::randomUserSessionLosesNothing()
{
    QFETCH(bool, inStore);
    endSession();
    m_random.seed(quint32(m_seed ^ (m_seed >> 32)));
    buildSession(inStore);
    const int actions =
        inStore ? std::max(1, actionsFromEnvironment() / 5) : actionsFromEnvironment();
    const int kCheckpoint = inStore ? 100 : 500;
    qInfo("random session on the %s objects: %d actions, checkpoints every %d",
          inStore ? "store's" : "stand-alone", actions, kCheckpoint);
    checkModel(m_objects, QStringLiteral("start"));
    checkStoreFile(QStringLiteral("start"));
    checkWidgets(QStringLiteral("start"));
    QVERIFY2(!m_failed, qPrintable(m_failure));

    QElapsedTimer timer;
    timer.start();
    int checkpoints = 0;
    for (m_step = 1; m_step <= actions && !m_failed; ++m_step) {
        m_shadow.boxes.clear();
        m_shadow.failures.clear();
        m_shadow.writes.clear();
        for (const FaultInjector* faults : std::as_const(m_recorded))
            const_cast<FaultInjector*>(faults)->clearCalls();
        m_h->boxes().clear();
        act();
        QCoreApplication::processEvents();
        if (m_h->boxes().shown() != m_shadow.boxes) {
            QStringList shown;
            for (const Shown& b : m_h->boxes().shown())
                shown.append(QStringLiteral("%1 (%2) %3").arg(b.title).arg(b.style).arg(b.prompt));
            fail(QStringLiteral("message boxes shown: [%1], the shadow predicts %2")
                     .arg(shown.join(QStringLiteral("; ")))
                     .arg(m_shadow.boxes.size()));
        }
        QStringList logged;
        for (const auto& e : m_h->log().entries())
            if (e.kind != MemoryDiagnosticLog::Kind::Trace)
                logged.append(QStringLiteral("%1|%2").arg(e.module).arg(e.error.Number));
        if (logged != m_shadow.failures)
            fail(QStringLiteral("failures logged: [%1], the shadow predicts [%2]; the log:\n")
                     .arg(logged.join(QStringLiteral(", ")),
                          m_shadow.failures.join(QStringLiteral(", ")))
                 + m_h->log().failureLines().join('\n'));
        m_h->log().clear();
        for (auto it = m_recorded.cbegin(); it != m_recorded.cend(); ++it) {
            const QStringList made = writesIn(*it.value());
            const QStringList predicted = m_shadow.writes.value(it.key());
            if (made != predicted)
                fail(QStringLiteral("%1 received the writes [%2], the shadow predicts [%3]")
                         .arg(it.key(), made.join(QStringLiteral(", ")),
                              predicted.join(QStringLiteral(", "))));
        }
        checkModel(m_objects, QStringLiteral("after the action"));
        if (m_step % kCheckpoint == 0 || m_step == actions) {
            checkWidgets(QStringLiteral("checkpoint %1").arg(m_step));
            checkStoreFile(QStringLiteral("checkpoint %1").arg(m_step));
            ++checkpoints;
        }
    }
    QStringList counts;
    for (auto it = m_actionCounts.cbegin(); it != m_actionCounts.cend(); ++it)
        counts.append(QStringLiteral("%1 %2 (%3 ms)")
                          .arg(it.key())
                          .arg(it.value())
                          .arg(m_actionMs.value(it.key())));
    qInfo("random session seed %llu: %d actions in %lld ms, %d checkpoints",
          (unsigned long long)m_seed, m_step - 1, timer.elapsed(), checkpoints);
    qInfo("actions by kind:\n  %s", qPrintable(counts.join(QStringLiteral("\n  "))));
    qInfo("bringing the window back to the front: %lld ms", m_activationMs);
    QVERIFY2(!m_failed, qPrintable(m_failure));
    QVERIFY(m_h->lastResort().isEmpty());
}

QTEST_MAIN(tst_RandomSession)
#include "tst_randomsession.moc"
