#pragma once

#include <QDialog>
#include <QString>

// The first start of a user without an office: open the sample office, make an empty office, or
// connect to the office's server.
class WelcomeDialog : public QDialog {
    Q_OBJECT
public:
    enum class Start { None, Sample, Empty, Server };

    explicit WelcomeDialog(QWidget* parent = nullptr);
    Start start() const { return m_start; }

    // Asks on a first start. path is the user's own office file; on return it names the office
    // to open (the server's when one was chosen) and create says whether a missing or empty
    // office gets the sample. False when the user closed the dialog without a choice.
    static bool firstStart(QString& path, bool& create);

private:
    Start m_start = Start::None;
};
