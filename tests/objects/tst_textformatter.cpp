#include "objects/standaloneapplicationservices.h"
#include "rules/textformatter.h"

#include <QTest>

using namespace ZebObjects;

class TestTextFormatter : public QObject {
    Q_OBJECT
private slots:
    void supportedTextIsLeftUnchangedAndAnswersFalse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("ascii") << QStringLiteral("All fixtures are 120-277V unless noted.");
        QTest::newRow("crlf and tab") << QStringLiteral("line 1\r\nline 2\tcolumn\n");
        QTest::newRow("latin-1 letters")
            << QStringLiteral(u"Caf\u00e9 \u00c5ngstr\u00f6m \u00bd\" \u00b0F \u00a9");
        QTest::newRow("every printable ascii") << QStringLiteral(
            " !\"#$%&'()*+,-./"
            "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`abcdefghijklmnopqrstuvwxyz{|}~");
    }
    void supportedTextIsLeftUnchangedAndAnswersFalse()
    {
        QFETCH(QString, text);
        QString copy = text;
        QCOMPARE(TextFormatter::reformat(copy), false);
        QCOMPARE(copy, text);
        // Byte for byte, including whether it was null.
        QCOMPARE(copy.isNull(), text.isNull());
        QCOMPARE(copy.toUtf8(), text.toUtf8());
    }

    void unsupportedTextIsRewrittenAndAnswersTrue_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("curly single quotes")
            << QStringLiteral(u"\u2018it\u2019s\u2019") << QStringLiteral("'it's'");
        QTest::newRow("curly double quotes")
            << QStringLiteral(u"\u201cLED\u201d \u201e") << QStringLiteral("\"LED\" \"");
        QTest::newRow("primes") << QStringLiteral(u"4\u2032 6\u2033") << QStringLiteral("4' 6\"");
        QTest::newRow("dashes and minus")
            << QStringLiteral(u"120\u2013277V \u2014 \u2212 5") << QStringLiteral("120-277V - - 5");
        QTest::newRow("ellipsis") << QStringLiteral(u"and so on\u2026")
                                  << QStringLiteral("and so on...");
        QTest::newRow("bullets") << QStringLiteral(u"\u2022 one\r\n\u25cf two")
                                 << QStringLiteral("* one\r\n* two");
        QTest::newRow("no-break and thin spaces")
            << QStringLiteral(u"10\u00a0ft\u2009x\u202f2") << QStringLiteral("10 ft x 2");
        QTest::newRow("zero width dropped")
            << QStringLiteral(u"\ufeffab\u200bc\u200d") << QStringLiteral("abc");
        QTest::newRow("other bmp character")
            << QStringLiteral(u"3500\u212a \u4e2d") << QStringLiteral("3500? ?");
        QTest::newRow("surrogate pair counts once")
            << QStringLiteral(u"lamp \U0001F4A1!") << QStringLiteral("lamp ?!");
        QTest::newRow("control characters")
            << QStringLiteral(u"a\u0007b\u0085c") << QStringLiteral("a?b?c");
        QTest::newRow("lone surrogate")
            << QString(QChar(0xD800)) + QStringLiteral("z") << QStringLiteral("?z");
        QTest::newRow("unsupported after supported run keeps the run")
            << QStringLiteral(u"Fixture type A \u2013 2x4")
            << QStringLiteral("Fixture type A - 2x4");
    }
    void unsupportedTextIsRewrittenAndAnswersTrue()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QString copy = text;
        QCOMPARE(TextFormatter::reformat(copy), true);
        QCOMPARE(copy, expected);
    }

    void reformattedTextPassesASecondCheck_data()
    {
        unsupportedTextIsRewrittenAndAnswersTrue_data();
    }
    void reformattedTextPassesASecondCheck()
    {
        QFETCH(QString, text);
        QString once = text;
        TextFormatter::reformat(once);
        QString twice = once;
        QCOMPARE(TextFormatter::reformat(twice), false);
        QCOMPARE(twice, once);
    }

    void everyCodePointIsIdempotent()
    {
        // Every BMP code point on its own, in context.
        for (char32_t c = 1; c < 0x10000; ++c) {
            if (c >= 0xD800 && c <= 0xDFFF)
                continue;
            QString text = QStringLiteral("a") + QChar(char16_t(c)) + QStringLiteral("b");
            const bool changed = TextFormatter::reformat(text);
            QCOMPARE(changed, !TextFormatter::isSupported(c));
            QString again = text;
            QVERIFY2(!TextFormatter::reformat(again), qPrintable(QString::number(uint(c), 16)));
            for (const QChar ch : text)
                QVERIFY(TextFormatter::isSupported(ch.unicode()));
        }
    }

    void isSupportedAcceptsPrintableLatin1AndLineBreaks()
    {
        QVERIFY(TextFormatter::isSupported(U'\r'));
        QVERIFY(TextFormatter::isSupported(U'\n'));
        QVERIFY(TextFormatter::isSupported(U'\t'));
        QVERIFY(TextFormatter::isSupported(0x20));
        QVERIFY(TextFormatter::isSupported(0x7E));
        QVERIFY(TextFormatter::isSupported(0xA1));
        QVERIFY(TextFormatter::isSupported(0xFF));
        QVERIFY(!TextFormatter::isSupported(0x00));
        QVERIFY(!TextFormatter::isSupported(0x1F));
        QVERIFY(!TextFormatter::isSupported(0x7F));
        QVERIFY(!TextFormatter::isSupported(0x9F));
        QVERIFY(!TextFormatter::isSupported(0xA0));
        QVERIFY(!TextFormatter::isSupported(0x100));
        QVERIFY(!TextFormatter::isSupported(0x1F4A1));
    }

    void applicationServicesReformatTextFollowsTheRule()
    {
        StandaloneApplicationServices services;
        QString plain = QStringLiteral("Plain text");
        QCOMPARE(services.ReformatText(plain), false);
        QCOMPARE(plain, QStringLiteral("Plain text"));
        QString fancy = QStringLiteral(u"\u201cFancy\u201d");
        QCOMPARE(services.ReformatText(fancy), true);
        QCOMPARE(fancy, QStringLiteral("\"Fancy\""));
        QCOMPARE(services.ReformatText(fancy), false);
    }
};

QTEST_GUILESS_MAIN(TestTextFormatter)
#include "tst_textformatter.moc"
