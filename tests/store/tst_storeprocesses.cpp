// Several programs on one store file: a writer killed in the middle of its work, changes seen
// across processes, and a lock held by another process.
#include "contracts/textobjects.h"
#include "rawdatabase.h"
#include "store/jobcontents.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storesubmittal.h"
#include "store/storetextobjects.h"
#include "support/testsupport.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <vector>

using namespace ZebObjects;

namespace {

const QString kWriter = QStringLiteral(ZEB_STORE_WRITER);

QString prepared(const QTemporaryDir& dir)
{
    const QString file = dir.filePath(QStringLiteral("office.zebdb"));
    const auto store = Store::open(file);
    JobContents c;
    c.number = QStringLiteral("24-0131");
    c.name = QStringLiteral("Riverside Medical Office Building");
    c.paragraphs = {{QStringLiteral("Enclosed please find our submittal."), true}};
    for (int i = 0; i < 20; ++i) {
        LineItemRecord l;
        l.quantity = i + 1;
        l.type = QStringLiteral("T%1").arg(i);
        c.lines.append(l);
    }
    store->createJob(c);
    return file;
}

}  // namespace

class TestStoreProcesses : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        ZebTest::useScratchDataHome();
        QVERIFY(QFile::exists(kWriter));
    }

    void aWriterKilledInTheMiddleOfItsWorkLosesNothingItCommitted()
    {
        QTemporaryDir dir;
        const QString file = prepared(dir);
        for (int round = 0; round < 3; ++round) {
            QProcess writer;
            writer.start(kWriter, {QStringLiteral("churn"), file});
            QVERIFY(writer.waitForStarted());
            int committed = 0;
            QElapsedTimer timer;
            timer.start();
            QByteArray pending;
            while (committed < 25 + round * 10 && timer.elapsed() < 60000) {
                writer.waitForReadyRead(1000);
                pending += writer.readAllStandardOutput();
                qsizetype end;
                while ((end = pending.indexOf('\n')) >= 0) {
                    const QByteArray line = pending.left(end);
                    pending.remove(0, end + 1);
                    if (line.startsWith("committed "))
                        committed = line.mid(10).toInt();
                }
            }
            QVERIFY2(committed > 0, writer.readAllStandardError().constData());
            // SIGKILL: no chance to finish a transaction or close the file.
            writer.kill();
            QVERIFY(writer.waitForFinished());
            QCOMPARE(writer.exitStatus(), QProcess::CrashExit);

            const auto store = Store::open(file, Store::OpenMode::OpenExisting);
            const auto texts = store->openJob(store->jobs().first().id)->coverLetterParagraphs();
            const auto all = texts->Enumerate();
            // Every paragraph the writer reported committed is there, in order, whole; one
            // more may have been committed before the report went out.
            QVERIFY(all.size() >= 1 + committed);
            QCOMPARE(all.first()->Text(), QStringLiteral("Enclosed please find our submittal."));
            for (int n = 1; n < all.size(); ++n)
                QCOMPARE(all[n]->Text(), QStringLiteral("Paragraph %1").arg(n));
            QCOMPARE(sqliteIntegrity(file), QStringLiteral("ok"));
            // The file takes the next writer as before.
            texts->Add(QStringLiteral("After round %1").arg(round), false);
            QCOMPARE(texts->Count(), all.size() + 1);
            // Each round numbers its paragraphs from 1 again.
            while (texts->Count() > 1)
                texts->Remove(texts->Item(2)->Key());
        }
    }

    void twoProcessesSeeEachOthersCommittedChangesOnTheirNextRead()
    {
        QTemporaryDir dir;
        const QString file = prepared(dir);
        const auto store = Store::open(file);
        const auto submittal = store->openJob(store->jobs().first().id)->submittal();
        QCOMPARE(submittal->IssuedBy(), QString());

        QProcess other;
        other.start(kWriter, {QStringLiteral("set-issuer"), file, QStringLiteral("Jens Okonkwo")});
        QVERIFY(other.waitForFinished(30000));
        QCOMPARE(other.exitCode(), 0);
        QCOMPARE(submittal->IssuedBy(), QStringLiteral("Jens Okonkwo"));

        submittal->setIssuedBy(QStringLiteral("Keiko Brandt"));
        QProcess reader;
        reader.start(kWriter, {QStringLiteral("read-issuer"), file});
        QVERIFY(reader.waitForFinished(30000));
        QCOMPARE(reader.exitCode(), 0);
        QCOMPARE(QString::fromUtf8(reader.readAllStandardOutput()).trimmed(),
                 QStringLiteral("Keiko Brandt"));
    }

    void severalProgramsMakingTheSameNewFileAllSucceed()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("new.zebdb"));
        std::vector<std::unique_ptr<QProcess>> programs;
        for (int i = 0; i < 6; ++i) {
            programs.push_back(std::make_unique<QProcess>());
            programs.back()->start(kWriter, {QStringLiteral("open"), file});
        }
        for (const auto& p : programs) {
            QVERIFY(p->waitForFinished(30000));
            QVERIFY2(p->exitCode() == 0, p->readAllStandardError().constData());
        }
        const auto store = Store::open(file, Store::OpenMode::OpenExisting);
        QVERIFY(store->isEmpty());
        QCOMPARE(sqliteIntegrity(file), QStringLiteral("ok"));
    }

    void aWriteWhileAnotherProcessHoldsTheLockFailsThenSucceedsAfterIt()
    {
        QTemporaryDir dir;
        const QString file = prepared(dir);
        Store::Options options;
        options.busyTimeoutMs = 100;
        const auto store = Store::open(file, Store::OpenMode::OpenExisting, options);
        const auto submittal = store->openJob(store->jobs().first().id)->submittal();

        QProcess holder;
        holder.start(kWriter, {QStringLiteral("hold-lock"), file});
        QVERIFY(holder.waitForReadyRead(30000));
        QCOMPARE(holder.readLine().trimmed(), QByteArray("locked"));
        try {
            submittal->setIncludeBOM(true);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 70);
            QCOMPARE(f.Description(),
                     QStringLiteral("The database file \"%1\" is locked by another "
                                    "writer (database is locked)")
                         .arg(file));
        }
        QCOMPARE(submittal->IncludeBOM(), false);
        holder.write("\n");
        holder.closeWriteChannel();
        QVERIFY(holder.waitForFinished(30000));
        submittal->setIncludeBOM(true);
        QCOMPARE(submittal->IncludeBOM(), true);
    }
};

QTEST_GUILESS_MAIN(TestStoreProcesses)
#include "tst_storeprocesses.moc"
