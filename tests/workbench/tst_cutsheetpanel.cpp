// Cut sheets in the workstation: the panel beside the Line Items page (file dialog, dropped
// files, a bad file's reason), and the preview that shows and exports the package's own bytes.
#include "contracts/lineitem.h"
#include "contracts/lineitems.h"
#include "cutsheetdock.h"
#include "cutsheetpanel.h"
#include "formdescription.h"
#include "contracts/runtime.h"
#include "officefile.h"
#include "packagepreview.h"
#include "store/store.h"
#include "store/storecutsheets.h"
#include "store/storejob.h"
#include "store/storelineitems.h"
#include "support/testsupport.h"
#include "support/workbenchtesting.h"
#include "userinput.h"
#include "workstation.h"

#include <QComboBox>
#include <QDockWidget>
#include <QFile>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QPdfDocument>
#include <QPdfView>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>
#include <QTreeWidget>
#include <QUrl>

using ZebObjects::Store;

namespace {

using ZebTest::writeCutSheet;

QStringList titlesUnder(const QAbstractItemModel& model, const QModelIndex& parent = {},
                        int level = 0)
{
    QStringList out;
    for (int r = 0; r < model.rowCount(parent); ++r) {
        const QModelIndex i = model.index(r, 0, parent);
        out << QString(level * 2, QLatin1Char(' ')) + i.data().toString();
        out << titlesUnder(model, i, level + 1);
    }
    return out;
}

}  // namespace

class tst_CutSheetPanel : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_home;
    std::unique_ptr<QTemporaryDir> m_scratch;
    std::shared_ptr<Store> m_store;
    qint64 m_jobId = 0;
    QStringList m_types;

    QString file(const QString& name) const { return m_scratch->filePath(name); }

    std::unique_ptr<Workstation> openWorkstation()
    {
        auto window = ZebTest::openWorkstation(m_store);
        window->openJob(m_jobId);
        window->show();
        return window;
    }

    QStringList attachedNames() const
    {
        QStringList out;
        for (const auto& a : m_store->cutSheets().attachments(m_jobId))
            out << a.type + QLatin1Char('=') + a.sheet.fileName;
        return out;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        ZebTest::useScratchHome(m_home, true);
    }

    void init()
    {
        m_scratch = std::make_unique<QTemporaryDir>();
        m_store = OfficeFile::resetSample(file(QStringLiteral("office.sqlite")));
        m_jobId = Workstation::defaultJob(*m_store);
        m_types.clear();
        for (const auto& line : m_store->openJob(m_jobId)->lineItems()->Enumerate()) {
            const QString type = line->Type().trimmed();
            if (line->Selected() && !type.isEmpty() && !m_types.contains(type))
                m_types << type;
        }
        QVERIFY(m_types.size() >= 2);
    }

    void cleanup()
    {
        ZebObjects::Runtime::setApplicationServices(nullptr);
        m_store.reset();
        m_scratch.reset();
    }

    void panelShowsBesideTheLineItemsPageOnly()
    {
        auto window = openWorkstation();
        auto* dock = window->findChild<QDockWidget*>(QStringLiteral("dockCutSheets"));
        QVERIFY(dock);
        window->showPage(0);
        QVERIFY(!dock->isVisible());
        window->showPage(window->pageTitles().indexOf(QStringLiteral("Line Items")));
        QVERIFY(dock->isVisible());
        auto* tree = dock->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
        QVERIFY(tree);
        QCOMPARE(tree->topLevelItem(0)->text(0),
                 QStringLiteral("Type %1: No cut sheet attached").arg(m_types[0]));
        QCOMPARE(ZebTest::unnamedAccessibleElements(dock->widget()), QStringList());
    }

    void droppedFilesAttachToTheTypeTheyAreDroppedOn()
    {
        QVERIFY(writeCutSheet(file(QStringLiteral("alpha.pdf")), QStringLiteral("alpha"), 2));
        QVERIFY(writeCutSheet(file(QStringLiteral("bravo.pdf")), QStringLiteral("bravo"), 1));
        auto window = openWorkstation();
        window->showPage(window->pageTitles().indexOf(QStringLiteral("Line Items")));
        auto* tree = window->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
        QVERIFY(tree);
        QTreeWidgetItem* second = tree->topLevelItem(1);
        const QPoint at = tree->visualItemRect(second).center();
        QMimeData mime;
        mime.setUrls({QUrl::fromLocalFile(file(QStringLiteral("alpha.pdf"))),
                      QUrl::fromLocalFile(file(QStringLiteral("bravo.pdf")))});
        QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(at), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &drop);
        QVERIFY(drop.isAccepted());
        const QString type = m_types[1];
        QCOMPARE(attachedNames(), (QStringList{type + QStringLiteral("=alpha.pdf"),
                                               type + QStringLiteral("=bravo.pdf")}));
        // The panel shows them under their type.
        tree = window->findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
        QTreeWidgetItem* typeRow = tree->topLevelItem(1);
        QCOMPARE(typeRow->text(0), QStringLiteral("Type ") + type);
        QCOMPARE(typeRow->childCount(), 2);
        QCOMPARE(typeRow->child(0)->text(0), QStringLiteral("alpha.pdf"));
        QCOMPARE(typeRow->child(0)->text(1), QStringLiteral("2"));
    }

    void attachButtonTakesTheChosenFilesAndRefusesABadOneWithItsReason()
    {
        QVERIFY(writeCutSheet(file(QStringLiteral("alpha.pdf")), QStringLiteral("alpha"), 1));
        QFile notes(file(QStringLiteral("notes.pdf")));
        QVERIFY(notes.open(QIODevice::WriteOnly));
        notes.write("Fixture schedule, see the drawings.\n");
        notes.close();
        CutSheetPanel::Hooks hooks;
        QString askedFor;
        hooks.chooseFiles = [&](const QString& type) {
            askedFor = type;
            return QStringList{file(QStringLiteral("notes.pdf")),
                               file(QStringLiteral("alpha.pdf"))};
        };
        CutSheetPanel panel(m_store, m_store->openJob(m_jobId), hooks);
        panel.show();
        QString boxText;
        QString boxTitle;
        ZebTest::WhenModal<QMessageBox> answer([&](QMessageBox& box) {
            boxText = box.text();
            boxTitle = box.windowTitle();
            box.accept();
        });
        QTest::mouseClick(panel.findChild<QPushButton*>(QStringLiteral("cmdAttachCutSheets")),
                          Qt::LeftButton);
        QCOMPARE(askedFor, m_types[0]);
        QCOMPARE(boxTitle, QStringLiteral("Attach Cut Sheets"));
        QCOMPARE(boxText,
                 QStringLiteral("The cut sheet \"notes.pdf\" is refused: it is not a PDF file."));
        QCOMPARE(attachedNames(), QStringList{m_types[0] + QStringLiteral("=alpha.pdf")});

        // Removing takes it off the type, not out of the library.
        auto* tree = panel.findChild<QTreeWidget*>(QStringLiteral("tvwCutSheets"));
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        QTest::mouseClick(panel.findChild<QPushButton*>(QStringLiteral("cmdRemoveCutSheet")),
                          Qt::LeftButton);
        QCOMPARE(attachedNames(), QStringList());
        QCOMPARE(m_store->cutSheets().library().size(), 1);
    }

    void previewShowsAndExportsThePackagesOwnBytes()
    {
        QVERIFY(writeCutSheet(file(QStringLiteral("alpha.pdf")), QStringLiteral("alpha"), 3));
        auto window = openWorkstation();
        CutSheetPanel(m_store, m_store->openJob(m_jobId), {})
            .attachFiles(m_types[0], {file(QStringLiteral("alpha.pdf"))});
        // The other types lack a sheet: the pre-export check asks, and is answered to go on.
        ZebTest::WhenModal<QDialog> goOn([](QDialog& d) { d.accept(); });
        const QByteArray pdf = CutSheetDock::packageBytes(*window);
        QVERIFY(goOn.answered());
        QVERIFY(pdf.startsWith("%PDF-"));

        QString target;
        PackagePreview::Hooks hooks;
        hooks.chooseTarget = [&](const QString& suggested) {
            target = suggested;
            return file(QStringLiteral("out.pdf"));
        };
        PackagePreview preview(pdf, file(QStringLiteral("suggested.pdf")), hooks);
        preview.show();
        QCOMPARE(preview.document()->status(), QPdfDocument::Status::Ready);
        const int pages = preview.document()->pageCount();
        QVERIFY(pages > 3);
        auto* thumbnails = preview.findChild<QListWidget*>(QStringLiteral("lstThumbnails"));
        QCOMPARE(thumbnails->count(), pages);
        QCOMPARE(thumbnails->item(pages - 1)->text(), QString::number(pages));
        // The outline of the file, cut sheets included.
        auto* outline = preview.findChild<QTreeView*>(QStringLiteral("tvwOutline"));
        const QStringList titles = titlesUnder(*outline->model());
        const qsizetype cut = titles.indexOf(QStringLiteral("Cut Sheets"));
        QVERIFY2(cut > 0, qPrintable(titles.join(QLatin1Char('|'))));
        QCOMPARE(titles.mid(cut),
                 (QStringList{QStringLiteral("Cut Sheets"), QStringLiteral("  Type ") + m_types[0],
                              QStringLiteral("    alpha.pdf")}));
        // Choosing the last thumbnail shows the last page; the outline's "Cut Sheets" its page.
        thumbnails->setCurrentRow(pages - 1);
        QCOMPARE(preview.currentPage(), pages - 1);
        QModelIndex cutSheets;
        for (int r = 0; r < outline->model()->rowCount(); ++r) {
            if (outline->model()->index(r, 0).data().toString() == QLatin1String("Cut Sheets"))
                cutSheets = outline->model()->index(r, 0);
        }
        QVERIFY(cutSheets.isValid());
        emit outline->activated(cutSheets);
        QCOMPARE(preview.currentPage(), pages - 3);
        // Zoom.
        auto* zoom = preview.findChild<QComboBox*>(QStringLiteral("cboZoom"));
        zoom->setCurrentText(QStringLiteral("150%"));
        QCOMPARE(preview.view()->zoomMode(), QPdfView::ZoomMode::Custom);
        QCOMPARE(preview.view()->zoomFactor(), 1.5);
        zoom->setCurrentText(QStringLiteral("Fit Page"));
        QCOMPARE(preview.view()->zoomMode(), QPdfView::ZoomMode::FitInView);
        QCOMPARE(ZebTest::unnamedAccessibleElements(&preview).join(QLatin1Char('|')), QString());

        // Export writes exactly what was shown.
        QTest::mouseClick(preview.findChild<QPushButton*>(QStringLiteral("cmdExport")),
                          Qt::LeftButton);
        QCOMPARE(target, file(QStringLiteral("suggested.pdf")));
        QCOMPARE(preview.result(), int(QDialog::Accepted));
        QFile out(file(QStringLiteral("out.pdf")));
        QVERIFY(out.open(QIODevice::ReadOnly));
        QCOMPARE(out.readAll(), pdf);
    }
};

QTEST_MAIN(tst_CutSheetPanel)
#include "tst_cutsheetpanel.moc"
