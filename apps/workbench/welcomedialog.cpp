#include "welcomedialog.h"

#include "officesettingsdialog.h"
#include "store/store.h"

#include <QCommandLinkButton>
#include <QLabel>
#include <QVBoxLayout>

WelcomeDialog::WelcomeDialog(QWidget* parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("dlgWelcome"));
    setWindowTitle(QStringLiteral("Welcome"));
    setAccessibleName(windowTitle());
    setAccessibleDescription(
        QStringLiteral("How to begin: the sample office, an empty office or the office's server"));
    auto* text =
        new QLabel(QStringLiteral("<b>Welcome to the submittal workstation.</b><br>"
                                  "Your office's jobs, customers and texts live in an office. "
                                  "Where do you want to start?"),
                   this);
    text->setObjectName(QStringLiteral("lblWelcome"));
    text->setWordWrap(true);
    const auto choice = [this](const char* name, const QString& caption, const QString& description,
                               Start start) {
        auto* b = new QCommandLinkButton(caption, description, this);
        b->setObjectName(QLatin1String(name));
        b->setAccessibleDescription(description);
        connect(b, &QCommandLinkButton::clicked, this, [this, start] {
            m_start = start;
            accept();
        });
        return b;
    };
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(
        choice("cmdOpenSample", QStringLiteral("Open the &sample office"),
               QStringLiteral("Four jobs, a customer directory and texts to try everything with"),
               Start::Sample));
    layout->addWidget(choice(
        "cmdEmptyOffice", QStringLiteral("Make an &empty office"),
        QStringLiteral("Start with your own jobs: File > New Job makes the first"), Start::Empty));
    layout->addWidget(
        choice("cmdConnectServer", QStringLiteral("&Connect to the office's server"),
               QStringLiteral("Work on the office's shared database with the other workstations"),
               Start::Server));
    setMinimumWidth(480);
}

bool WelcomeDialog::firstStart(QString& path, bool& create)
{
    WelcomeDialog welcome;
    if (welcome.exec() != QDialog::Accepted)
        return false;
    switch (welcome.start()) {
    case Start::Sample: create = true; return true;
    case Start::Empty:
        // An office of its own with nothing in it: it is never filled with the sample.
        ZebObjects::Store::open(path);
        create = false;
        return true;
    case Start::Server: {
        OfficeSettingsDialog server(path);
        if (server.exec() != QDialog::Accepted)
            return false;
        OfficeSettingsDialog::saveLocation(server.location());
        path = server.location();
        create = false;
        return true;
    }
    case Start::None: break;
    }
    return false;
}
