// The office file under faults, as the workstation meets them: replacing an office on a nearly
// full disk, a read-only office, a write that fails on a full disk, an empty file, and boxes
// that nobody could answer.
#include "contracts/submittal.h"
#include "formdescription.h"
#include "frame/messageboxes.h"
#include "hostmessageboxes.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "savestate.h"
#include "store/jobcontents.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "workstation.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <memory>

using ZebObjects::Store;

namespace {

// A small tmpfs the test mounts (we are root here and in CI) and takes away afterwards.
class SmallDisk {
public:
    explicit SmallDisk(qint64 bytes)
    {
        m_dir.setAutoRemove(true);
        m_ok =
            ::mount("tmpfs", QFile::encodeName(m_dir.path()).constData(), "tmpfs", 0,
                    QStringLiteral("size=%1k,mode=0755").arg(bytes / 1024).toLatin1().constData())
            == 0;
    }
    ~SmallDisk()
    {
        if (m_ok)
            ::umount2(QFile::encodeName(m_dir.path()).constData(), MNT_DETACH);
    }
    bool ok() const { return m_ok; }
    QString filePath(const QString& name) const { return m_dir.filePath(name); }
    qint64 freeBytes() const
    {
        struct statvfs s { };
        ::statvfs(QFile::encodeName(m_dir.path()).constData(), &s);
        return qint64(s.f_bavail) * qint64(s.f_frsize);
    }
    // Takes all but left bytes of the free space (left 0: every byte).
    void fill(qint64 left)
    {
        QFile f(filePath(QStringLiteral("filler-%1").arg(++m_fillers)));
        if (!f.open(QIODevice::WriteOnly))
            return;
        const QByteArray block(4096, 'x');
        while (freeBytes() > left) {
            const qint64 n = std::min<qint64>(block.size(), freeBytes() - left);
            if (f.write(block.constData(), n) <= 0 || !f.flush())
                break;
        }
    }
    void release()
    {
        for (; m_fillers > 0; --m_fillers)
            QFile::remove(filePath(QStringLiteral("filler-%1").arg(m_fillers)));
    }

private:
    QTemporaryDir m_dir;
    bool m_ok = false;
    int m_fillers = 0;
};

QString integrity(const QString& file)
{
    // Through the store's own read: open read-only, ask the file.
    try {
        const auto store = Store::open(file, Store::OpenMode::ReadOnly);
        return QStringLiteral("ok:%1").arg(store->jobs().size());
    } catch (const ZebObjects::Failure& f) {
        return f.Description();
    }
}

ZebObjects::JobContents smallJob()
{
    ZebObjects::JobContents c;
    c.number = QStringLiteral("23-0042");
    c.name = QStringLiteral("Old Library Annex");
    c.paragraphs = {{QStringLiteral("Enclosed please find our submittal."), true}};
    return c;
}

// The office that is there before a reset: one job, an issuer of its own.
void makeOldOffice(const QString& file)
{
    for (const QString& suffix : {QString(), QStringLiteral("-wal"), QStringLiteral("-shm")})
        QFile::remove(file + suffix);
    const auto store = Store::open(file);
    store->createJob(smallJob());
    store->setIssuedByNames({QStringLiteral("Old office")});
}

using Run = ZebTest::ProgramRun;

// Runs the workbench on the data and settings folders in home, offscreen, as nobody when asked;
// err holds the program's own lines alone.
Run runWorkbench(const QStringList& args, const QString& home, bool asNobody = false)
{
    ZebTest::ProgramOptions options;
    options.environment = {QStringLiteral("XDG_DATA_HOME=") + home + QStringLiteral("/data"),
                           QStringLiteral("XDG_CONFIG_HOME=") + home + QStringLiteral("/config"),
                           QStringLiteral("QT_QPA_PLATFORM=offscreen")};
    options.asNobody = asNobody;
    options.ownLinesOnly = true;
    options.timeoutMs = 60000;
    return ZebTest::runWorkbench(args, options);
}

using ZebTest::control;

using ZebTest::clickCheckBox;

}  // namespace

class tst_OfficeFaults : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        // The workbench may run as nobody: its data and settings folders are open to all.
        QFile::setPermissions(m_home.path(), QFileDevice::Permissions(0x7777));
        ZebTest::useScratchHome(m_home, true);
        QVERIFY2(geteuid() == 0,
                 "the fault tests mount small disks and run as nobody: run them as root");
    }

    void cleanup()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        ZebSubCtl::MessageBoxes::setService(nullptr);
    }

    void replacingAnOfficeOnANearlyFullDiskIsAllOrNothing()
    {
        SmallDisk disk(4 * 1024 * 1024);
        QVERIFY(disk.ok());
        const QString office = disk.filePath(QStringLiteral("office.sqlite"));
        // From a disk that takes hardly anything to one that takes the new office and its log:
        // each reset either puts a whole sample office in place or leaves the old one whole.
        int replaced = 0, refused = 0;
        for (qint64 left = 16 * 1024; left <= 1536 * 1024; left += 48 * 1024) {
            makeOldOffice(office);
            disk.fill(left);
            bool done = false;
            try {
                OfficeFile::resetSample(office).reset();
                done = true;
            } catch (const ZebObjects::Failure& f) {
                ++refused;
                const QString prefix =
                    QStringLiteral("The sample office cannot be made in \"%1\", so "
                                   "the office there is left as it was: ")
                        .arg(office);
                QVERIFY2(f.Description().startsWith(prefix), qPrintable(f.Description()));
                QVERIFY2(f.Number() == 61
                             && f.Description().contains(QStringLiteral("the disk is full")),
                         qPrintable(QStringLiteral("%1 %2").arg(f.Number()).arg(f.Description())));
            }
            QVERIFY(!QFileInfo::exists(office + QStringLiteral(".new")));
            // Looked at with room on the disk again: the new office whole, or the old one.
            disk.release();
            if (done) {
                ++replaced;
                QCOMPARE(integrity(office), QStringLiteral("ok:4"));
                QCOMPARE(Store::open(office, Store::OpenMode::ReadOnly)->issuedByNames(),
                         ZebObjects::SampleOffice::issuedByNames());
            } else {
                QCOMPARE(integrity(office), QStringLiteral("ok:1"));
                QCOMPARE(Store::open(office, Store::OpenMode::ReadOnly)->issuedByNames(),
                         QStringList{QStringLiteral("Old office")});
            }
        }
        QVERIFY(replaced > 0);
        QVERIFY(refused > 0);
        qInfo("%d disk sizes: %d resets replaced the office, %d left it as it was",
              replaced + refused, replaced, refused);
    }

    void aFirstStartOnAFullDiskLeavesNoOfficeBehind()
    {
        SmallDisk disk(2 * 1024 * 1024);
        QVERIFY(disk.ok());
        const QString office = disk.filePath(QStringLiteral("office.sqlite"));
        disk.fill(64 * 1024);
        try {
            OfficeFile::open(office, true);
            QFAIL("the office was made on a full disk");
        } catch (const ZebObjects::Failure& f) {
            QCOMPARE(f.Number(), 61);
        }
        QVERIFY(!QFileInfo::exists(office));
        disk.release();
        QCOMPARE(OfficeFile::open(office, true)->jobs().size(), 4);
    }

    void aFailedWriteShowsNotSavedUntilALaterWriteSucceeds()
    {
        SmallDisk disk(2 * 1024 * 1024);
        QVERIFY(disk.ok());
        const QString office = disk.filePath(QStringLiteral("office.sqlite"));
        auto store = OfficeFile::resetSample(office);
        auto boxes = std::make_shared<ZebSubCtl::ScriptedMessageBoxService>();
        ZebSubCtl::MessageBoxes::setService(boxes);
        const auto owned = ZebTest::openWorkstation(store);
        Workstation& window = *owned;
        window.openJob(window.startingJob());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.saveStatus(), QStringLiteral("All changes saved"));
        auto* labels = control<QAbstractButton>(window, "chkLabels");
        QVERIFY(labels);
        const bool before = labels->isChecked();
        const auto submittal = window.job()->submittal();
        QCOMPARE(submittal->IncludeLabels(), before);

        // The log starts empty, so that the next write must make it grow.
        const auto emptyLog = [&] {
            QSqlQuery q(QSqlDatabase::database(store->connectionName()));
            QVERIFY2(q.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")),
                     qPrintable(q.lastError().text()));
            QVERIFY(q.next());
            QCOMPARE(q.value(0).toInt(), 0);
            q.finish();
        };
        emptyLog();
        disk.fill(0);
        clickCheckBox(labels);
        QCOMPARE(boxes->shown().size(), 1);
        const QString cause =
            QStringLiteral("The database file \"%1\" cannot grow: the disk is full "
                           "(database or disk is full)")
                .arg(office);
        QCOMPARE(boxes->shown().first().title, QStringLiteral("61 - ") + cause);
        // The box keeps what it shows; the window says the change is not in the file.
        QCOMPARE(labels->isChecked(), !before);
        QCOMPARE(submittal->IncludeLabels(), before);
        QCOMPARE(window.saveStatus(), QStringLiteral("Not saved: ") + cause);
        // Reading does not make it saved.
        QCOMPARE(window.job()->submittal()->IncludeBOM(),
                 control<QAbstractButton>(window, "chkBOM")->isChecked());
        QCOMPARE(window.saveStatus(), QStringLiteral("Not saved: ") + cause);

        // F5 shows what the file holds.
        disk.release();
        QTest::keyClick(&window, Qt::Key_F5);
        labels = control<QAbstractButton>(window, "chkLabels");
        QCOMPARE(labels->isChecked(), before);
        QCOMPARE(window.job()->submittal()->IncludeLabels(), before);
        QCOMPARE(window.saveStatus(), QStringLiteral("All changes saved"));

        // Not saved again, until a later write succeeds.
        emptyLog();
        disk.fill(0);
        auto* bom = control<QAbstractButton>(window, "chkBOM");
        clickCheckBox(bom);
        QCOMPARE(boxes->shown().size(), 2);
        QCOMPARE(window.saveStatus(), QStringLiteral("Not saved: ") + cause);
        disk.release();
        // The box shows the change that was not saved; clicked, it writes back what the file
        // holds, which saves nothing.
        clickCheckBox(bom);
        QCOMPARE(window.saveStatus(), QStringLiteral("Not saved: ") + cause);
        clickCheckBox(bom);
        QCOMPARE(window.saveStatus(), QStringLiteral("All changes saved"));
        QCOMPARE(window.job()->submittal()->IncludeBOM(), bom->isChecked());
        window.close();
    }

    void aReadOnlyOfficeSaysSoOnceAndShowsNoBox()
    {
        QTemporaryDir dir;
        const QString office = dir.filePath(QStringLiteral("office.sqlite"));
        OfficeFile::resetSample(office).reset();
        auto store = Store::open(office, Store::OpenMode::ReadOnly);
        auto shown = std::make_shared<ZebSubCtl::ScriptedMessageBoxService>();
        auto boxes = std::make_shared<HostMessageBoxes>(shown, false);
        boxes->setQuiet(store->readOnlyFailure().Description());
        ZebSubCtl::MessageBoxes::setService(boxes);
        const auto owned = ZebTest::openWorkstation(store);
        Workstation& window = *owned;
        window.openJob(window.startingJob());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // Every page is bound: writing back what they show changes nothing.
        QCOMPARE(window.problems(), QStringList());
        QCOMPARE(window.saveStatus(), QStringLiteral("Read-only: changes cannot be saved"));
        for (int page = 0; page < window.pageCount(); ++page)
            window.showPage(page);
        window.showPage(0);
        auto* labels = control<QAbstractButton>(window, "chkLabels");
        const bool before = window.job()->submittal()->IncludeLabels();
        clickCheckBox(labels);
        QCOMPARE(window.job()->submittal()->IncludeLabels(), before);
        QCOMPARE(shown->shown().size(), 0);
        QCOMPARE(window.saveStatus(), QStringLiteral("Read-only: changes cannot be saved"));
        window.close();
    }

    void aReadOnlyOfficeEndsEveryCommandLineMode()
    {
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7755));
        const QString office = dir.filePath(QStringLiteral("office.sqlite"));
        OfficeFile::resetSample(office).reset();
        QFile::setPermissions(office, QFileDevice::Permissions(0x6444));
        QDir().mkpath(m_home.filePath(QStringLiteral("out")));
        QFile::setPermissions(m_home.filePath(QStringLiteral("out")),
                              QFileDevice::Permissions(0x7777));
        const QString png = m_home.filePath(QStringLiteral("out/read-only.png"));
        const QString design = m_home.filePath(QStringLiteral("out/read-only.json"));
        Run r = runWorkbench({QStringLiteral("--db"), office, QStringLiteral("--screenshot"), png},
                             m_home.path(), true);
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        QVERIFY(QFileInfo(png).size() > 0);
        r = runWorkbench({QStringLiteral("--db"), office, QStringLiteral("--save-design"), design},
                         m_home.path(), true);
        QCOMPARE(r.err, QString());
        QCOMPARE(r.code, 0);
        QVERIFY(QFileInfo(design).size() > 0);
        // Nothing was written to the office.
        QVERIFY(!QFileInfo::exists(office + QStringLiteral("-wal")));
    }

    void aBoxInACommandLineModeIsOneLineOnStandardErrorAndTheRunFails()
    {
        SmallDisk disk(2 * 1024 * 1024);
        QVERIFY(disk.ok());
        const QString office = disk.filePath(QStringLiteral("office.sqlite"));
        // Kept open here, the office keeps its shared memory, so that the workbench can read it;
        // its log starts empty, so that the workbench's first write must make it grow.
        OfficeFile::resetSample(office).reset();
        const auto store = Store::open(office, Store::OpenMode::OpenExisting);
        {
            QSqlQuery q(QSqlDatabase::database(store->connectionName()));
            QVERIFY2(q.exec(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)")),
                     qPrintable(q.lastError().text()));
            QVERIFY(q.next());
            QCOMPARE(q.value(0).toInt(), 0);
            q.finish();
        }
        disk.fill(0);
        const Run r = runWorkbench({QStringLiteral("--db"), office, QStringLiteral("--save-design"),
                                    m_home.filePath(QStringLiteral("full.json"))},
                                   m_home.path());
        QCOMPARE(r.code, 1);
        const QStringList lines = r.err.split(QLatin1Char('\n'));
        QVERIFY2(!lines.isEmpty(), qPrintable(r.err));
        QCOMPARE(lines.first(),
                 QStringLiteral("zeb-workbench: 61 - The database file \"%1\" cannot "
                                "grow: the disk is full (database or disk is full): The "
                                "requested operation cannot be completed.")
                     .arg(office));
        disk.release();
    }

    void aConsoleBoxAnswersAtOnceAndDeclinesQuestions()
    {
        QTemporaryFile out;
        QVERIFY(out.open());
        std::FILE* file = std::fopen(QFile::encodeName(out.fileName()).constData(), "w");
        QVERIFY(file);
        HostMessageBoxes boxes(true, file);
        QCOMPARE(boxes.MsgBox(QStringLiteral("Remove all?\r\nThey go for good."),
                              ZebSubCtl::MsgBoxStyle::Question_OKCancel,
                              QStringLiteral("Customers")),
                 ZebSubCtl::MsgBoxAnswer::Cancel);
        QCOMPARE(
            boxes.MsgBox(QStringLiteral("Done."), ZebSubCtl::MsgBoxStyle::Information, QString()),
            ZebSubCtl::MsgBoxAnswer::OK);
        std::fclose(file);
        QCOMPARE(boxes.consoleLines(), 2);
        QFile written(out.fileName());
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(),
                 QByteArray("zeb-workbench: Customers: Remove all? They go for good.\n"
                            "zeb-workbench: Done.\n"));
    }

    void anUnreadableOfficeIsAClearMessage()
    {
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFileDevice::Permissions(0x7755));
        const QString office = dir.filePath(QStringLiteral("office.sqlite"));
        OfficeFile::resetSample(office).reset();
        QFile::setPermissions(office, QFileDevice::Permissions(0x6600));
        const Run r = runWorkbench({QStringLiteral("--db"), office, QStringLiteral("--save-design"),
                                    m_home.filePath(QStringLiteral("out/unreadable.json"))},
                                   m_home.path(), true);
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err,
                 QStringLiteral("zeb-workbench: Cannot open the office \"%1\": the file cannot be "
                                "read (permission denied)")
                     .arg(office));
    }

    void anEmptyFileBecomesAnOfficeOnlyWhenAsked()
    {
        QTemporaryDir dir;
        const QString empty = dir.filePath(QStringLiteral("empty.sqlite"));
        QFile f(empty);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.close();
        const Run r = runWorkbench({QStringLiteral("--db"), empty, QStringLiteral("--save-design"),
                                    dir.filePath(QStringLiteral("d.json"))},
                                   m_home.path());
        QCOMPARE(r.code, 1);
        QCOMPARE(r.err,
                 QStringLiteral("zeb-workbench: Cannot open the office \"%1\": the file is empty "
                                "(0 bytes); --reset-sample makes it an office with the sample")
                     .arg(empty));
        QCOMPARE(QFileInfo(empty).size(), 0);
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("d.json"))));
        // The choice of a new office in the window.
        {
            const auto store = OfficeFile::open(empty, false, true);
            QVERIFY(store->isEmpty());
        }
        QVERIFY(QFileInfo(empty).size() > 0);
        // --reset-sample makes it the sample office.
        QFile::resize(empty, 0);
        QCOMPARE(
            runWorkbench({QStringLiteral("--db"), empty, QStringLiteral("--reset-sample"),
                          QStringLiteral("--save-design"), dir.filePath(QStringLiteral("d.json"))},
                         m_home.path())
                .code,
            0);
        QCOMPARE(Store::open(empty, Store::OpenMode::ReadOnly)->jobs().size(), 4);
    }

private:
    QTemporaryDir m_home;
};

QTEST_MAIN(tst_OfficeFaults)
#include "tst_officefaults.moc"
