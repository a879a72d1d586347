#include "package/cutsheetfile.h"

#include "contracts/failure.h"

// qpdf's headers without the old pointer type.
#define POINTERHOLDER_TRANSITION 4

#include <qpdf/Pl_Discard.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFExc.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFPageObjectHelper.hh>

#include <QFile>
#include <QFileInfo>

namespace ZebPackage {

namespace {

const QString kSource = QStringLiteral("ZebPackage.CutSheetFile");

[[noreturn]] void refuse(const QString& fileName, const QString& reason)
{
    throw ZebObjects::Failure(
        ZebObjects::ErrorNumber::BadFileFormat, kSource,
        QStringLiteral("The cut sheet \"%1\" is refused: %2.").arg(fileName, reason));
}

QString warningText(const QPDFExc& e)
{
    // The message without the file name qpdf puts in front: the caller names the file.
    return QString::fromStdString(e.getMessageDetail());
}

}  // namespace

CutSheetFile::Inspection CutSheetFile::inspect(const QString& fileName, const QByteArray& bytes)
{
    // A PDF says so in its first kilobyte; anything else is some other kind of file.
    if (!bytes.left(1024).contains("%PDF-"))
        refuse(fileName, QStringLiteral("it is not a PDF file"));
    Inspection out;
    QPDF doc;
    doc.setSuppressWarnings(true);
    try {
        doc.processMemoryFile(fileName.toStdString().c_str(), bytes.constData(),
                              std::size_t(bytes.size()));
    } catch (const QPDFExc& e) {
        if (e.getErrorCode() == qpdf_e_password)
            refuse(fileName, QStringLiteral("it is encrypted and needs a password"));
        refuse(fileName, QStringLiteral("it is damaged (%1)").arg(warningText(e)));
    } catch (const std::exception& e) {
        refuse(fileName,
               QStringLiteral("it is damaged (%1)").arg(QString::fromLocal8Bit(e.what())));
    }
    if (doc.isEncrypted())
        refuse(fileName, QStringLiteral("it is encrypted"));
    try {
        std::vector<QPDFPageObjectHelper> pages = QPDFPageDocumentHelper(doc).getAllPages();
        if (pages.empty())
            refuse(fileName, QStringLiteral("it has no pages"));
        // Every page's content must decode: a file cut short loses its pages' streams.
        for (QPDFPageObjectHelper& page : pages) {
            Pl_Discard discard;
            page.pipeContents(&discard);
        }
        out.pageCount = qint32(pages.size());
    } catch (const ZebObjects::Failure&) {
        throw;
    } catch (const QPDFExc& e) {
        refuse(fileName, QStringLiteral("it is damaged (%1)").arg(warningText(e)));
    } catch (const std::exception& e) {
        refuse(fileName,
               QStringLiteral("it is damaged (%1)").arg(QString::fromLocal8Bit(e.what())));
    }
    for (const QPDFExc& w : doc.getWarnings())
        out.warnings << warningText(w);
    return out;
}

CutSheetFile::Inspection CutSheetFile::inspectFile(const QString& path, QByteArray* bytes)
{
    QFile file(path);
    const QString name = QFileInfo(path).fileName();
    if (!file.open(QIODevice::ReadOnly))
        throw ZebObjects::Failure(ZebObjects::ErrorNumber::PathFileAccessError, kSource,
                                  QStringLiteral("The cut sheet \"%1\" cannot be read: %2")
                                      .arg(path, file.errorString()));
    const QByteArray data = file.readAll();
    Inspection out = inspect(name, data);
    if (bytes)
        *bytes = data;
    return out;
}

}  // namespace ZebPackage
