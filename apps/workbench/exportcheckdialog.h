#pragma once

#include <QDialog>
#include <QStringList>

class QListWidget;
class QPushButton;

// Shown before a package goes out incomplete: what it lacks, and the choice to write it anyway
// or go back and fill it in. Going back is the default.
class ExportCheckDialog : public QDialog {
    Q_OBJECT
public:
    ExportCheckDialog(const QString& job, const QStringList& gaps, QWidget* parent = nullptr);

    QStringList gaps() const { return m_gaps; }

private:
    QStringList m_gaps;
    QListWidget* m_list = nullptr;
};
