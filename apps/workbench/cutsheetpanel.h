#pragma once

#include <QStringList>
#include <QWidget>

#include <functional>
#include <memory>

class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
namespace ZebObjects {
class Store;
class StoreJob;
}  // namespace ZebObjects

// The job's fixture types with the cut sheets each prints, on a page of its own beside the line
// items: attach PDF files by a file dialog or by dropping them on a type, remove one, and
// preview the package. A file that cannot print is refused with the reason; one that had to be
// repaired is attached and the repair is told.
class CutSheetPanel : public QWidget {
    Q_OBJECT
public:
    struct Hooks {
        // Asks for the files to attach to the type; empty when the user cancels. Unset: a file
        // dialog.
        std::function<QStringList(const QString& type)> chooseFiles;
        // Shows the package before it goes out.
        std::function<void()> preview;
    };

    CutSheetPanel(std::shared_ptr<ZebObjects::Store> store,
                  std::shared_ptr<ZebObjects::StoreJob> job, Hooks hooks,
                  QWidget* parent = nullptr);

    // Reads the types and their sheets again.
    void reload();
    // Attaches the files to the type, each checked first; says what was refused or repaired.
    // Answers how many were attached.
    int attachFiles(const QString& type, const QStringList& paths);
    // The type of the current row (a sheet's row answers its type); empty when none.
    QString currentType() const;
    // What the last attach said, as its message box showed it; empty when all went well.
    QString lastMessage() const { return m_lastMessage; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdAttach_Click();
    void cmdRemove_Click();
    QTreeWidgetItem* typeItem(const QString& type) const;

    std::shared_ptr<ZebObjects::Store> m_store;
    std::shared_ptr<ZebObjects::StoreJob> m_job;
    Hooks m_hooks;
    QTreeWidget* m_tree = nullptr;
    QPushButton* m_attach = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_preview = nullptr;
    QLabel* m_summary = nullptr;
    QString m_lastMessage;
};
