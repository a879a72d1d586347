#include "hostmessageboxes.h"

#include <QStringList>

HostMessageBoxes::HostMessageBoxes(bool console, std::FILE* out)
    : HostMessageBoxes(std::make_shared<ZebSubCtl::QtMessageBoxService>(), console, out)
{ }

HostMessageBoxes::HostMessageBoxes(std::shared_ptr<ZebSubCtl::MessageBoxService> shown,
                                   bool console, std::FILE* out)
    : m_shown(std::move(shown)), m_console(console), m_out(out)
{ }

int HostMessageBoxes::MsgBox(const QString& prompt, int style, const QString& title)
{
    if (!m_quiet.isEmpty() && (prompt.contains(m_quiet) || title.contains(m_quiet)))
        return ZebSubCtl::MsgBoxAnswer::OK;
    if (!m_console)
        return m_shown->MsgBox(prompt, style, title);
    // One line, whatever breaks the box's text holds.
    QStringList parts;
    for (const QString& part : {title, prompt}) {
        const QString line = part.simplified();
        if (!line.isEmpty())
            parts.append(line);
    }
    std::fprintf(m_out, "zeb-workbench: %s\n", qPrintable(parts.join(QStringLiteral(": "))));
    std::fflush(m_out);
    ++m_lines;
    // Nobody answers: a question is declined, so that nothing is done on its behalf.
    return style == ZebSubCtl::MsgBoxStyle::Question_OKCancel ? ZebSubCtl::MsgBoxAnswer::Cancel
                                                              : ZebSubCtl::MsgBoxAnswer::OK;
}
