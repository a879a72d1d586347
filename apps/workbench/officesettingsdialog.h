#pragma once

#include <QDialog>

class QLineEdit;
class QRadioButton;
class QSpinBox;

// Where this workstation finds its office: a file of its own, or the office's database on a
// PostgreSQL server that every workstation of the office shares. The choice is kept in the
// workstation's settings and used from the next start on (--db still overrides it).
class OfficeSettingsDialog : public QDialog {
    Q_OBJECT
public:
    // location: the office open now (a file path or "postgresql://user@host:port/database").
    explicit OfficeSettingsDialog(const QString& location, QWidget* parent = nullptr);

    // The location the dialog's fields name.
    QString location() const;

    // The location kept in the settings; empty when none was chosen.
    static QString savedLocation();
    static void saveLocation(const QString& location);

private:
    void updateFields();

    QRadioButton* m_file = nullptr;
    QRadioButton* m_server = nullptr;
    QLineEdit* m_path = nullptr;
    QLineEdit* m_host = nullptr;
    QSpinBox* m_port = nullptr;
    QLineEdit* m_database = nullptr;
    QLineEdit* m_user = nullptr;
};
