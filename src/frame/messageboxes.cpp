#include "frame/messageboxes.h"

#include <QApplication>
#include <QMessageBox>

namespace ZebSubCtl {

int QtMessageBoxService::MsgBox(const QString& prompt, int style, const QString& title)
{
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setText(prompt);
    box.setWindowModality(Qt::ApplicationModal);
    switch (style) {
    case MsgBoxStyle::Question_OKCancel:
        box.setIcon(QMessageBox::Question);
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case MsgBoxStyle::Information:
        box.setIcon(QMessageBox::Information);
        box.setStandardButtons(QMessageBox::Ok);
        break;
    default:
        box.setIcon(QMessageBox::Warning);
        box.setStandardButtons(QMessageBox::Ok);
        break;
    }
    box.setDefaultButton(QMessageBox::Ok);
    return box.exec() == QMessageBox::Ok ? MsgBoxAnswer::OK : MsgBoxAnswer::Cancel;
}

int ScriptedMessageBoxService::MsgBox(const QString& prompt, int style, const QString& title)
{
    m_shown.append(Shown{prompt, style, title});
    if (m_answers.empty())
        return MsgBoxAnswer::OK;
    const int answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}

namespace {
std::shared_ptr<MessageBoxService>& slot()
{
    static std::shared_ptr<MessageBoxService> s;
    return s;
}
}  // namespace

MessageBoxService& MessageBoxes::service()
{
    auto& s = slot();
    if (!s)
        s = std::make_shared<QtMessageBoxService>();
    return *s;
}

void MessageBoxes::setService(std::shared_ptr<MessageBoxService> service)
{
    slot() = std::move(service);
}

}  // namespace ZebSubCtl
