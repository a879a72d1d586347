#include "objects/defaultdiagnosticlog.h"
#include "objects/memorydiagnosticlog.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace ZebObjects;

namespace {

const ErrorInfo kError{91, QStringLiteral("ZebObjects.TextObjects"),
                       QStringLiteral("Object variable not set")};

// A logged line without its time stamp; a line without one comes back marked.
QString withoutTime(const QString& line)
{
    static const QRegularExpression stamp(
        QStringLiteral(R"(^\d{4}-\d{2}-\d{2} \d{2}:\d{2}:\d{2}\.\d{3} )"));
    const auto m = stamp.match(line);
    return m.hasMatch() ? line.mid(m.capturedLength()) : QStringLiteral("<no time stamp> ") + line;
}

// The lines of a log file without their time stamps.
QStringList fileLines(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
        return {QStringLiteral("<cannot open>")};
    const QString all = QString::fromUtf8(f.readAll());
    QStringList out;
    for (const QString& line : all.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        out << withoutTime(line);
    return out;
}

struct Captured {
    QtMsgType type;
    QString category;
    QString text;
};
QList<Captured> g_captured;

void capture(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    g_captured.append({type, QString::fromLatin1(context.category), text});
}

// Which levels of the log's category are on, whatever the environment's rules say.
QList<QtMsgType> g_enabled;
QLoggingCategory::CategoryFilter g_rules = nullptr;

void levels(QLoggingCategory* category)
{
    if (qstrcmp(category->categoryName(), "zeb.diagnostics") == 0) {
        for (QtMsgType t : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
            category->setEnabled(t, g_enabled.contains(t));
    } else if (g_rules) {
        g_rules(category);
    }
}

void enableLevels(const QList<QtMsgType>& types)
{
    g_enabled = types;
    const auto previous = QLoggingCategory::installFilter(levels);
    if (previous != levels)
        g_rules = previous;
}

void restoreRules()
{
    if (g_rules)
        QLoggingCategory::installFilter(g_rules);
    g_rules = nullptr;
}

}  // namespace

class TestDiagnosticLogs : public QObject {
    Q_OBJECT
private slots:
    void cleanup()
    {
        qInstallMessageHandler(nullptr);
        g_captured.clear();
        restoreRules();
    }

    void failureLinesAreReadable()
    {
        QCOMPARE(DefaultDiagnosticLog::formatFailure("ERROR", QStringLiteral("ctlTextSelect"),
                                                     QStringLiteral("cmdAdd_Click()"), kError, 0),
                 QStringLiteral("ERROR ctlTextSelect cmdAdd_Click() #91 [ZebObjects.TextObjects] "
                                "Object variable not set (line 0)"));
        QCOMPARE(
            DefaultDiagnosticLog::formatFailure("WARNING", QStringLiteral("m"), QStringLiteral("l"),
                                                ErrorInfo{-5, QString(), QStringLiteral("d")}, 12),
            QStringLiteral("WARNING m l #-5 [] d (line 12)"));
    }

    void traceLinesShowALevelOnlyWhenItIsNotZero()
    {
        QCOMPARE(DefaultDiagnosticLog::formatTrace(QStringLiteral("ctlCustSelect"),
                                                   QStringLiteral("Customers()"),
                                                   QStringLiteral("Entering Method..."), 0),
                 QStringLiteral("TRACE ctlCustSelect Customers() Entering Method..."));
        QCOMPARE(DefaultDiagnosticLog::formatTrace(QStringLiteral("m"), QStringLiteral("l()"),
                                                   QStringLiteral("x"), 3),
                 QStringLiteral("TRACE m l() x (level 3)"));
    }

    void defaultLogAppendsOneTimeStampedLinePerEntryToTheNamedFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("zeb.log"));
        DefaultDiagnosticLog log;
        QCOMPARE(log.file(), QString());
        log.setFile(path);
        QCOMPARE(log.file(), path);
        log.Trace(QStringLiteral("ctlTextSelect"), QStringLiteral("Populate()"),
                  QStringLiteral("Entering Method..."), 0);
        log.LogError(QStringLiteral("ctlTextSelect"), QStringLiteral("cmdAdd_Click()"), kError, 0);
        log.LogNotice(QStringLiteral("ctlSubLine"), QStringLiteral("UserControl_Resize()"), kError,
                      0);
        log.LogWarning(QStringLiteral("ctlSubLines"), QStringLiteral("UserControl_Resize()"),
                       kError, 0);
        QCOMPARE(fileLines(path),
                 (QStringList{
                     QStringLiteral("TRACE ctlTextSelect Populate() Entering Method..."),
                     QStringLiteral("ERROR ctlTextSelect cmdAdd_Click() #91 "
                                    "[ZebObjects.TextObjects] Object variable not set (line 0)"),
                     QStringLiteral("NOTICE ctlSubLine UserControl_Resize() #91 "
                                    "[ZebObjects.TextObjects] Object variable not set (line 0)"),
                     QStringLiteral("WARNING ctlSubLines UserControl_Resize() #91 "
                                    "[ZebObjects.TextObjects] Object variable not set (line 0)")}));
    }

    void defaultLogAppendsToAFileThatExists()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("zeb.log"));
        {
            DefaultDiagnosticLog first;
            first.setFile(path);
            first.LogError(QStringLiteral("a"), QStringLiteral("b"), kError, 0);
        }
        DefaultDiagnosticLog second;
        second.setFile(path);
        second.LogError(QStringLiteral("c"), QStringLiteral("d"), kError, 0);
        const QStringList lines = fileLines(path);
        QCOMPARE(lines.size(), 2);
        QVERIFY(lines[0].startsWith(QStringLiteral("ERROR a b ")));
        QVERIFY(lines[1].startsWith(QStringLiteral("ERROR c d ")));
    }

    void anEmptyPathStopsWritingToTheFile()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("zeb.log"));
        DefaultDiagnosticLog log;
        log.setFile(path);
        log.LogError(QStringLiteral("a"), QStringLiteral("b"), kError, 0);
        log.setFile(QString());
        QCOMPARE(log.file(), QString());
        log.LogError(QStringLiteral("c"), QStringLiteral("d"), kError, 0);
        QCOMPARE(fileLines(path).size(), 1);
    }

    void aFileThatCannotBeOpenedFailsWith75()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("missing/zeb.log"));
        DefaultDiagnosticLog log;
        try {
            log.setFile(path);
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), 75);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.DiagnosticLog"));
            QVERIFY(f.Description().startsWith(
                QStringLiteral("Path/File access error: cannot open the log file \"%1\": ")
                    .arg(path)));
        }
        QCOMPARE(log.file(), QString());
    }

    void defaultLogWritesThroughItsLoggingCategory()
    {
        qInstallMessageHandler(capture);
        enableLevels({QtInfoMsg, QtWarningMsg, QtCriticalMsg});
        DefaultDiagnosticLog log;
        log.LogError(QStringLiteral("m"), QStringLiteral("l"), kError, 0);
        log.LogWarning(QStringLiteral("m"), QStringLiteral("l"), kError, 0);
        log.LogNotice(QStringLiteral("m"), QStringLiteral("l"), kError, 0);
        QCOMPARE(g_captured.size(), 3);
        QCOMPARE(g_captured[0].type, QtCriticalMsg);
        QCOMPARE(g_captured[0].category, QStringLiteral("zeb.diagnostics"));
        QCOMPARE(withoutTime(g_captured[0].text),
                 QStringLiteral(
                     "ERROR m l #91 [ZebObjects.TextObjects] Object variable not set (line 0)"));
        QCOMPARE(g_captured[1].type, QtWarningMsg);
        QVERIFY(withoutTime(g_captured[1].text).startsWith(QStringLiteral("WARNING m l #91")));
        QCOMPARE(g_captured[2].type, QtInfoMsg);
        QVERIFY(withoutTime(g_captured[2].text).startsWith(QStringLiteral("NOTICE m l #91")));
    }

    void tracesAreSkippedUnlessEnabledOrWrittenToAFile()
    {
        qInstallMessageHandler(capture);
        enableLevels({QtInfoMsg, QtWarningMsg, QtCriticalMsg});
        DefaultDiagnosticLog log;
        log.Trace(QStringLiteral("m"), QStringLiteral("l()"), QStringLiteral("Entering Method..."),
                  0);
        QVERIFY(g_captured.isEmpty());
        enableLevels({QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg});
        log.Trace(QStringLiteral("m"), QStringLiteral("l()"), QStringLiteral("Exiting Method..."),
                  0);
        QCOMPARE(g_captured.size(), 1);
        QCOMPARE(g_captured[0].type, QtDebugMsg);
        QCOMPARE(withoutTime(g_captured[0].text), QStringLiteral("TRACE m l() Exiting Method..."));
    }

    void memoryLogKeepsEveryEntryInOrder()
    {
        MemoryDiagnosticLog log;
        log.Trace(QStringLiteral("ctlCustSelect"), QStringLiteral("cmdAdd_Click()"),
                  QStringLiteral("Entering Method..."), 0);
        log.LogError(QStringLiteral("ctlCustSelect"), QStringLiteral("cmdAdd_Click"), kError, 0);
        log.LogNotice(QStringLiteral("ctlSubLine"), QStringLiteral("UserControl_Resize()"),
                      ErrorInfo{6, QStringLiteral("s"), QStringLiteral("Overflow")}, 7);
        log.LogWarning(QStringLiteral("ctlSubLines"), QStringLiteral("UserControl_Resize()"),
                       ErrorInfo{-1, QString(), QString()}, 0);
        log.Trace(QStringLiteral("m"), QStringLiteral("l"), QStringLiteral("msg"), 2);
        QCOMPARE(
            log.lines(),
            (QStringList{QStringLiteral("Trace|ctlCustSelect|cmdAdd_Click()|Entering Method...|0"),
                         QStringLiteral("LogError|ctlCustSelect|cmdAdd_Click|91|ZebObjects."
                                        "TextObjects|Object variable not set|0"),
                         QStringLiteral("LogNotice|ctlSubLine|UserControl_Resize()|6|s|Overflow|7"),
                         QStringLiteral("LogWarning|ctlSubLines|UserControl_Resize()|-1|||0"),
                         QStringLiteral("Trace|m|l|msg|2")}));
        QCOMPARE(
            log.failureLines(),
            (QStringList{QStringLiteral("LogError|ctlCustSelect|cmdAdd_Click|91|ZebObjects."
                                        "TextObjects|Object variable not set|0"),
                         QStringLiteral("LogNotice|ctlSubLine|UserControl_Resize()|6|s|Overflow|7"),
                         QStringLiteral("LogWarning|ctlSubLines|UserControl_Resize()|-1|||0")}));
        QCOMPARE(log.entries().size(), 5);
        QCOMPARE(log.entries()[1].kind, MemoryDiagnosticLog::Kind::Error);
        QCOMPARE(log.entries()[1].error, kError);
        QCOMPARE(log.entries()[2].line, 7);
        QCOMPARE(log.entries()[4].level, 2);
        log.clear();
        QVERIFY(log.entries().isEmpty());
        QVERIFY(log.lines().isEmpty());
    }

    void aFailingLogOperationReachesItsCaller()
    {
        MemoryDiagnosticLog log;
        log.faults().failNext(
            QStringLiteral("LogError"),
            ErrorInfo{70, QStringLiteral("log"), QStringLiteral("Permission denied")});
        QVERIFY_THROWS_EXCEPTION(Failure,
                                 log.LogError(QStringLiteral("m"), QStringLiteral("l"), kError, 0));
        QVERIFY(log.entries().isEmpty());
        log.LogError(QStringLiteral("m"), QStringLiteral("l"), kError, 0);
        QCOMPARE(log.entries().size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestDiagnosticLogs)
#include "tst_diagnosticlogs.moc"
