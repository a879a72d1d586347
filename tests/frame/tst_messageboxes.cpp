#include "frame/messageboxes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>

using namespace ZebSubCtl;

namespace {
struct Seen {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    bool modal = false;
};

// Answers the next modal box as a user would: reads it, then clicks the given button.
void answerNextBox(Seen& seen, QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, [&seen, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        QVERIFY(box);
        seen.title = box->windowTitle();
        seen.text = box->text();
        seen.icon = box->icon();
        seen.buttons = box->standardButtons();
        seen.modal = box->isModal();
        QTest::mouseClick(box->button(button), Qt::LeftButton);
    });
}
}  // namespace

class tst_MessageBoxes : public QObject {
    Q_OBJECT
private slots:
    void style48IsWarningWithOk();
    void style64IsInformationWithOk();
    void style33IsQuestionWithOkAndCancelAndReturnsTheAnswer();
    void scriptedServiceRecordsAndAnswersFromItsQueue();
    void processServiceCanBeReplaced();
};

void tst_MessageBoxes::style48IsWarningWithOk()
{
    QtMessageBoxService service;
    Seen seen;
    answerNextBox(seen, QMessageBox::Ok);
    const int answer =
        service.MsgBox(QStringLiteral("The requested operation cannot be completed."), 48,
                       QStringLiteral("91 - Object variable not set"));
    QCOMPARE(answer, MsgBoxAnswer::OK);
    QCOMPARE(seen.title, QStringLiteral("91 - Object variable not set"));
    QCOMPARE(seen.text, QStringLiteral("The requested operation cannot be completed."));
    QCOMPARE(seen.icon, QMessageBox::Warning);
    QCOMPARE(seen.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QVERIFY(seen.modal);
}

void tst_MessageBoxes::style64IsInformationWithOk()
{
    QtMessageBoxService service;
    Seen seen;
    answerNextBox(seen, QMessageBox::Ok);
    QCOMPARE(service.MsgBox(QStringLiteral("The customer has already been added."), 64,
                            QStringLiteral("Duplicate Customer")),
             MsgBoxAnswer::OK);
    QCOMPARE(seen.icon, QMessageBox::Information);
    QCOMPARE(seen.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(seen.title, QStringLiteral("Duplicate Customer"));
}

void tst_MessageBoxes::style33IsQuestionWithOkAndCancelAndReturnsTheAnswer()
{
    QtMessageBoxService service;
    Seen seen;
    answerNextBox(seen, QMessageBox::Cancel);
    QCOMPARE(service.MsgBox(QStringLiteral("This will remove all customers from this submittal."),
                            33, QStringLiteral("Are you sure?")),
             MsgBoxAnswer::Cancel);
    QCOMPARE(seen.icon, QMessageBox::Question);
    QCOMPARE(seen.buttons, QMessageBox::Ok | QMessageBox::Cancel);

    answerNextBox(seen, QMessageBox::Ok);
    QCOMPARE(service.MsgBox(QStringLiteral("p"), 33, QStringLiteral("t")), MsgBoxAnswer::OK);
}

void tst_MessageBoxes::scriptedServiceRecordsAndAnswersFromItsQueue()
{
    ScriptedMessageBoxService service;
    service.queueAnswer(MsgBoxAnswer::Cancel);
    QCOMPARE(service.MsgBox(QStringLiteral("a"), 33, QStringLiteral("A")), MsgBoxAnswer::Cancel);
    QCOMPARE(service.MsgBox(QStringLiteral("b"), 48, QStringLiteral("B")), MsgBoxAnswer::OK);
    QCOMPARE(service.shown(), (QList<ScriptedMessageBoxService::Shown>{
                                  {QStringLiteral("a"), 33, QStringLiteral("A")},
                                  {QStringLiteral("b"), 48, QStringLiteral("B")}}));
}

void tst_MessageBoxes::processServiceCanBeReplaced()
{
    auto scripted = std::make_shared<ScriptedMessageBoxService>();
    MessageBoxes::setService(scripted);
    MessageBoxes::MsgBox(QStringLiteral("p"), 64, QStringLiteral("t"));
    QCOMPARE(scripted->shown().size(), 1);
    MessageBoxes::setService(nullptr);
    QVERIFY(dynamic_cast<QtMessageBoxService*>(&MessageBoxes::service()));
}

QTEST_MAIN(tst_MessageBoxes)
#include "tst_messageboxes.moc"
