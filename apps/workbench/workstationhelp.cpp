// The workstation's Help menu: About and the keyboard shortcuts.
#include "workstation.h"

#include "frame/libraryinfo.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTableWidget>
#include <QVBoxLayout>

void Workstation::addHelpMenu()
{
    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("mnuHelp"));
    QAction* keys =
        help->addAction(QStringLiteral("&Keyboard Shortcuts"), this, [this] { showShortcuts(); });
    keys->setObjectName(QStringLiteral("actShortcuts"));
    keys->setShortcut(QKeySequence::HelpContents);
    QAction* about = help->addAction(QStringLiteral("&About"), this, [this] {
        QMessageBox::about(
            this, QStringLiteral("About"),
            QStringLiteral("%1 workbench\nVersion %2")
                .arg(ZebSubCtl::LibraryInfo::Description(), ZebSubCtl::LibraryInfo::Version()));
    });
    about->setObjectName(QStringLiteral("actAbout"));
}

QList<QPair<QString, QString>> Workstation::shortcuts() const
{
    QList<QPair<QString, QString>> out;
    for (QAction* menu : menuBar()->actions())
        if (menu->menu())
            for (QAction* a : menu->menu()->actions())
                if (!a->shortcut().isEmpty())
                    out.append(
                        {QString(a->text()).remove(QLatin1Char('&')).remove(QStringLiteral("...")),
                         a->shortcut().toString(QKeySequence::NativeText)});
    // The Line Items Editor's own keys.
    const QPair<const char*, QKeySequence> editor[] = {
        {"Line Items Editor: edit the cell", QKeySequence(Qt::Key_F2)},
        {"Line Items Editor: insert a line", QKeySequence(Qt::Key_Insert)},
        {"Line Items Editor: delete the selected lines", QKeySequence(Qt::Key_Delete)},
        {"Line Items Editor: move the selected lines up", QKeySequence(Qt::ALT | Qt::Key_Up)},
        {"Line Items Editor: move the selected lines down", QKeySequence(Qt::ALT | Qt::Key_Down)},
        {"Line Items Editor: copy the selected lines", QKeySequence::Copy},
        {"Line Items Editor: paste lines", QKeySequence::Paste},
        {"Line Items Editor: undo", QKeySequence::Undo},
        {"Line Items Editor: redo", QKeySequence(Qt::CTRL | Qt::Key_Y)},
        {"Next page", QKeySequence(Qt::CTRL | Qt::Key_Tab)},
    };
    for (const auto& e : editor)
        out.append({QString::fromLatin1(e.first), e.second.toString(QKeySequence::NativeText)});
    return out;
}

void Workstation::showShortcuts()
{
    QDialog dialog(this);
    dialog.setObjectName(QStringLiteral("dlgShortcuts"));
    dialog.setWindowTitle(QStringLiteral("Keyboard Shortcuts"));
    const auto list = shortcuts();
    auto* table = new QTableWidget(int(list.size()), 2, &dialog);
    table->setObjectName(QStringLiteral("tblShortcuts"));
    table->setAccessibleName(QStringLiteral("Keyboard shortcuts"));
    table->setHorizontalHeaderLabels({QStringLiteral("Command"), QStringLiteral("Keys")});
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    for (int r = 0; r < list.size(); ++r) {
        table->setItem(r, 0, new QTableWidgetItem(list[r].first));
        table->setItem(r, 1, new QTableWidgetItem(list[r].second));
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(table);
    layout->addWidget(buttons);
    dialog.resize(520, 480);
    dialog.exec();
}
