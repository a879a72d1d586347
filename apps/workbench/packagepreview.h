#pragma once

#include <QByteArray>
#include <QDialog>

#include <functional>

class QBuffer;
class QComboBox;
class QListWidget;
class QStandardItemModel;
class QPdfDocument;
class QPdfView;
class QTreeView;

// The package as it will go out, before it does: its pages large, their thumbnails, the outline,
// a zoom, and Export, which writes exactly the bytes shown.
class PackagePreview : public QDialog {
    Q_OBJECT
public:
    struct Hooks {
        // Asks where to write the package; empty when the user cancels. Unset: a file dialog.
        std::function<QString(const QString& suggested)> chooseTarget;
    };

    PackagePreview(const QByteArray& pdf, const QString& suggestedName, Hooks hooks,
                   QWidget* parent = nullptr);
    ~PackagePreview() override;

    QPdfDocument* document() const { return m_document; }
    QPdfView* view() const { return m_view; }
    // The page the view shows at its top (0-based).
    int currentPage() const;
    void showPage(int page);
    // Writes the previewed bytes to path all at once (a failure leaves what was there); true
    // when written.
    bool exportTo(const QString& path);
    // Where the last export went; empty before one.
    QString exportedPath() const { return m_exported; }

private:
    void cmdExport_Click();
    void applyZoom(int index);

    QByteArray m_pdf;
    QString m_suggested;
    Hooks m_hooks;
    QBuffer* m_buffer = nullptr;
    QPdfDocument* m_document = nullptr;
    QStandardItemModel* m_bookmarks = nullptr;
    QPdfView* m_view = nullptr;
    QListWidget* m_thumbnails = nullptr;
    QTreeView* m_outline = nullptr;
    QComboBox* m_zoom = nullptr;
    QString m_exported;
};
