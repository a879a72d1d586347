#include "platform/multilinetextbox.h"

#include "contracts/failure.h"
#include "platform/accessiblenames.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

namespace ZebSubCtl {

namespace {

const QString kCrLf = QStringLiteral("\r\n");

// The document's own text ('\n' breaks) from text with CR-LF, lone CR or LF breaks.
QString toDocument(const QString& text)
{
    QString plain = text;
    plain.replace(kCrLf, QStringLiteral("\n"));
    plain.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return plain;
}

// Length with each line break counted twice, for text with '\n' or paragraph-separator breaks.
int crLfLength(const QString& documentText)
{
    qsizetype breaks = 0;
    for (const QChar c : documentText)
        if (c == u'\n' || c == QChar::ParagraphSeparator || c == QChar::LineSeparator)
            ++breaks;
    return int(documentText.size() + breaks);
}

}  // namespace

MultiLineTextBox::MultiLineTextBox(QWidget* parent) : QPlainTextEdit(parent)
{
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setTabChangesFocus(true);
    nameScrollBars(this);
    connect(this, &QPlainTextEdit::textChanged, this, &MultiLineTextBox::onTextChanged);
}

MultiLineTextBox::~MultiLineTextBox() = default;

QString MultiLineTextBox::text() const
{
    QString out = toPlainText();
    out.replace(QLatin1Char('\n'), kCrLf);
    return out;
}

void MultiLineTextBox::setText(const QString& text)
{
    const QString plain = toDocument(text);
    if (plain == m_last)
        return;
    setPlainText(plain);
}

int MultiLineTextBox::length() const
{
    return crLfLength(toPlainText());
}

void MultiLineTextBox::setMaxLength(int length)
{
    if (length < 0)
        throw ZebObjects::Failure::invalidPropertyValue();
    m_maxLength = length;
}

int MultiLineTextBox::room() const
{
    if (m_maxLength == 0)
        return -1;
    const int selected = crLfLength(textCursor().selectedText());
    return qMax(0, m_maxLength - (length() - selected));
}

QString MultiLineTextBox::fitted(const QString& text) const
{
    const int left = room();
    if (left < 0)
        return text;
    QString out;
    int used = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n') {
            if (used + 2 > left)
                break;
            out += kCrLf;
            used += 2;
            ++i;
            continue;
        }
        const int cost = (c == u'\n' || c == u'\r') ? 2 : 1;
        if (used + cost > left)
            break;
        out += c;
        used += cost;
    }
    return out;
}

void MultiLineTextBox::keyPressEvent(QKeyEvent* event)
{
    if (m_maxLength > 0 && !isReadOnly()) {
        const bool isBreak = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        const QString typed = event->text();
        const bool isText = !typed.isEmpty() && typed.at(0).isPrint()
                            && !(event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier));
        if (isBreak && room() < 2) {
            event->accept();
            QApplication::beep();
            return;
        }
        if (isText) {
            const QString fit = fitted(typed);
            if (fit.size() < typed.size()) {
                event->accept();
                if (fit.isEmpty())
                    QApplication::beep();
                else
                    insertPlainText(fit);
                return;
            }
        }
    }
    QPlainTextEdit::keyPressEvent(event);
}

void MultiLineTextBox::insertFromMimeData(const QMimeData* source)
{
    if (m_maxLength == 0 || !source || !source->hasText()) {
        QPlainTextEdit::insertFromMimeData(source);
        return;
    }
    const QString fit = fitted(toDocument(source->text()));
    if (fit.isEmpty()) {
        QApplication::beep();
        return;
    }
    insertPlainText(fit);
    ensureCursorVisible();
}

void MultiLineTextBox::inputMethodEvent(QInputMethodEvent* event)
{
    if (m_maxLength > 0 && !event->commitString().isEmpty()) {
        const QString fit = fitted(event->commitString());
        if (fit.size() < event->commitString().size()) {
            QInputMethodEvent cut(event->preeditString(), event->attributes());
            cut.setCommitString(fit, event->replacementStart(), event->replacementLength());
            QPlainTextEdit::inputMethodEvent(&cut);
            return;
        }
    }
    QPlainTextEdit::inputMethodEvent(event);
}

void MultiLineTextBox::onTextChanged()
{
    QString now = toPlainText();
    if (now == m_last)
        return;
    m_last = std::move(now);
    emit changed();
}

}  // namespace ZebSubCtl
