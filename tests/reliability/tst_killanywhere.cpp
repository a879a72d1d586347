// Kill anywhere: a writer killed with SIGKILL at random points loses nothing it acknowledged and
// leaves a whole file; so does a reset of the office to the sample, which leaves the old office
// or the new one, never a damaged one. The seed is printed; ZEB_SEED=<seed> replays a run,
// ZEB_KILL_ROUNDS=<n> sets the writer's rounds (the reset gets half as many).
#include "contracts/textobject.h"
#include "contracts/textobjects.h"
#include "rawdatabase.h"
#include "store/jobcontents.h"
#include "sampleoffice/sampleoffice.h"
#include "store/store.h"
#include "store/storejob.h"
#include "store/storetextobjects.h"
#include "support/testsupport.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <thread>

using namespace ZebObjects;

namespace {

const QString kChild = QStringLiteral(ZEB_KILL_CHILD);

struct Paragraph {
    QString key;
    QString text;
    bool selected = false;
    friend bool operator==(const Paragraph&, const Paragraph&) = default;
};
using Paragraphs = QList<Paragraph>;

Paragraphs paragraphsOf(const QString& file)
{
    const auto store = Store::open(file, Store::OpenMode::OpenExisting);
    Paragraphs out;
    for (const auto& t :
         store->openJob(store->jobs().first().id)->coverLetterParagraphs()->Enumerate())
        out.append({t->Key(), t->Text(), t->Selected()});
    return out;
}

// What the file holds after op (a "begin" line's words) on before; keys of new paragraphs are
// left empty, since only the file knows them.
Paragraphs after(Paragraphs p, const QStringList& op)
{
    const auto at = [&](const QString& key) {
        for (qsizetype i = 0; i < p.size(); ++i)
            if (p[i].key == key)
                return i;
        return qsizetype(-1);
    };
    if (op[1] == QLatin1String("add"))
        p.append({QString(), QStringLiteral("Text ") + op[2], op[3] == QLatin1String("1")});
    else if (op[1] == QLatin1String("text"))
        p[at(op[2])].text = QStringLiteral("Text ") + op[3];
    else if (op[1] == QLatin1String("select"))
        p[at(op[2])].selected = op[3] == QLatin1String("1");
    else if (op[1] == QLatin1String("remove"))
        p.remove(at(op[2]));
    else if (op[1] == QLatin1String("batch"))
        for (int i = 0; i < 3; ++i)
            p.append({QString(), QStringLiteral("Text %1.%2").arg(op[2]).arg(i), false});
    return p;
}

// The keys the acknowledgement of op names for its new paragraphs.
void takeKeys(Paragraphs& p, const QStringList& ack)
{
    qsizetype next = ack[1] == QLatin1String("add") ? 4 : 3;
    for (Paragraph& paragraph : p)
        if (paragraph.key.isEmpty())
            paragraph.key = ack.value(next++);
}

bool matches(const Paragraphs& file, const Paragraphs& expected)
{
    if (file.size() != expected.size())
        return false;
    for (qsizetype i = 0; i < file.size(); ++i)
        if (file[i].text != expected[i].text || file[i].selected != expected[i].selected
            || (!expected[i].key.isEmpty() && file[i].key != expected[i].key))
            return false;
    return true;
}

QString shown(const Paragraphs& p)
{
    QStringList out;
    for (const Paragraph& x : p)
        out.append(QStringLiteral("%1:%2:%3").arg(x.key, x.text).arg(int(x.selected)));
    return out.join(QLatin1Char('|'));
}

quint32 seed()
{
    bool ok = false;
    const quint32 given = qEnvironmentVariable("ZEB_SEED").toUInt(&ok);
    return ok ? given : QRandomGenerator::global()->generate();
}

int rounds()
{
    bool ok = false;
    const int given = qEnvironmentVariableIntValue("ZEB_KILL_ROUNDS", &ok);
    return ok && given > 0 ? given : 30;
}

}  // namespace

class TestKillAnywhere : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        ZebTest::useScratchDataHome();
        QVERIFY(QFile::exists(kChild));
    }

    void aWriterKilledAnywhereLosesNothingItAcknowledged()
    {
        const quint32 s = seed();
        qInfo("seed %u (ZEB_SEED=%u replays it)", s, s);
        QRandomGenerator random(s);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        {
            JobContents c;
            c.number = QStringLiteral("24-0131");
            c.name = QStringLiteral("Riverside Medical Office Building");
            c.paragraphs = {{QStringLiteral("Initial 1"), true},
                            {QStringLiteral("Initial 2"), false}};
            Store::open(file)->createJob(c);
        }
        Paragraphs known = paragraphsOf(file);
        int acknowledged = 0;
        const int n = rounds();
        for (int round = 0; round < n; ++round) {
            QProcess writer;
            writer.start(kChild,
                         {QStringLiteral("write"), file, QString::number(random.generate())});
            QVERIFY(writer.waitForStarted());
            const int killAfter = int(random.bounded(1, 60));
            int acks = 0;
            QStringList pending;
            QByteArray buffer;
            QElapsedTimer clock;
            clock.start();
            while (acks < killAfter && clock.elapsed() < 30000) {
                writer.waitForReadyRead(1000);
                buffer += writer.readAllStandardOutput();
                qsizetype end;
                while ((end = buffer.indexOf('\n')) >= 0) {
                    const QStringList words =
                        QString::fromUtf8(buffer.left(end)).split(QLatin1Char(' '));
                    buffer.remove(0, end + 1);
                    if (words.first() == QLatin1String("begin")) {
                        pending = words;
                    } else if (words.first() == QLatin1String("ack")) {
                        known = after(known, pending);
                        takeKeys(known, words);
                        pending.clear();
                        ++acks;
                    }
                }
            }
            QVERIFY2(acks > 0, writer.readAllStandardError().constData());
            // Somewhere in the next write, or between writes.
            std::this_thread::sleep_for(std::chrono::microseconds(random.bounded(3000)));
            writer.kill();
            QVERIFY(writer.waitForFinished());
            QCOMPARE(writer.exitStatus(), QProcess::CrashExit);
            // What the pipe still held was acknowledged too.
            buffer += writer.readAllStandardOutput();
            for (const QByteArray& line : buffer.split('\n')) {
                const QStringList words = QString::fromUtf8(line).split(QLatin1Char(' '));
                if (words.first() == QLatin1String("begin")) {
                    pending = words;
                } else if (words.first() == QLatin1String("ack")) {
                    known = after(known, pending);
                    takeKeys(known, words);
                    pending.clear();
                    ++acks;
                }
            }
            acknowledged += acks;

            QCOMPARE(sqliteIntegrity(file), QStringLiteral("ok"));
            const Paragraphs inFile = paragraphsOf(file);
            // Every acknowledged write is there; the one under way when the kill came is there
            // whole or not at all.
            const bool same = matches(inFile, known);
            const bool next = !pending.isEmpty() && matches(inFile, after(known, pending));
            QVERIFY2(
                same || next,
                qPrintable(QStringLiteral("round %1, pending \"%2\"\nfile:  %3\nknown: %4")
                               .arg(round)
                               .arg(pending.join(QLatin1Char(' ')), shown(inFile), shown(known))));
            known = inFile;
        }
        qInfo("%d kills, %d acknowledged writes, none lost", n, acknowledged);
    }

    void aResetKilledAnywhereLeavesTheOldOfficeOrTheNewOne()
    {
        const quint32 s = seed();
        qInfo("seed %u (ZEB_SEED=%u replays it)", s, s);
        QRandomGenerator random(s);
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("office.sqlite"));
        // The office before each round: its own issuer, and its jobs.
        const auto mark = [&](int round) {
            const auto store = Store::open(file);
            if (store->jobs().isEmpty()) {
                JobContents c;
                c.number = QStringLiteral("23-0042");
                c.name = QStringLiteral("Old Library Annex");
                store->createJob(c);
            }
            store->setIssuedByNames({QStringLiteral("Old office %1").arg(round)});
            return store->jobs().size();
        };
        // A reset left alone, timed: the kills fall within that time.
        mark(0);
        qint64 whole = 0;
        {
            QProcess reset;
            reset.start(kChild, {QStringLiteral("reset"), file});
            QVERIFY(reset.waitForReadyRead(30000));
            QElapsedTimer clock;
            clock.start();
            QVERIFY(reset.waitForFinished(60000));
            whole = clock.nsecsElapsed() / 1000;
            QCOMPARE(reset.exitCode(), 0);
        }
        const int n = std::max(rounds() / 2, 1);
        int old = 0, fresh = 0;
        for (int round = 1; round <= n; ++round) {
            const qsizetype jobs = mark(round);
            QProcess reset;
            reset.start(kChild, {QStringLiteral("reset"), file});
            QVERIFY(reset.waitForReadyRead(30000));
            std::this_thread::sleep_for(
                std::chrono::microseconds(random.bounded(quint32(whole * 6 / 5 + 1))));
            reset.kill();
            QVERIFY(reset.waitForFinished());
            const bool done = reset.readAllStandardOutput().contains("done");

            QCOMPARE(sqliteIntegrity(file), QStringLiteral("ok"));
            const auto store = Store::open(file, Store::OpenMode::OpenExisting);
            const QStringList issuers = store->issuedByNames();
            if (issuers == SampleOffice::issuedByNames()) {
                ++fresh;
                QCOMPARE(store->jobs().size(), 4);
            } else {
                ++old;
                QVERIFY2(!done, "a reset that said it was done left the old office");
                QCOMPARE(issuers, QStringList{QStringLiteral("Old office %1").arg(round)});
                QCOMPARE(store->jobs().size(), jobs);
            }
        }
        qInfo("%d kills in %lld us resets: %d left the old office, %d the new one", n, whole, old,
              fresh);
    }
};

QTEST_GUILESS_MAIN(TestKillAnywhere)
#include "tst_killanywhere.moc"
