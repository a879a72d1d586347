#pragma once

#include "zebpackage_export.h"

// qpdf's headers without the old pointer type.
#define POINTERHOLDER_TRANSITION 4

#include "package/pdffinish.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>

#include <map>
#include <memory>
#include <vector>

namespace ZebPackage {

// Appends other PDFs' pages to a package being finished: each page keeps its size and rotation
// and its content as it is (fonts, images, vector art copied, not redrawn), shrunk onto the page
// so that a strip at its foot is free, where the stamp goes. The same file appended twice prints
// twice, each time with its own stamp. Internal to the package library.
class ZEBPACKAGE_EXPORT SheetAppender {
public:
    // Made before the document it appends to: the sheets' files must outlive it.
    SheetAppender();
    ~SheetAppender();
    SheetAppender(const SheetAppender&) = delete;
    SheetAppender& operator=(const SheetAppender&) = delete;

    // Appends every sheet after the pages doc has, stamped with the page's number in the whole.
    // The sheets' bytes must live until doc is written. Fails with std::exception naming the
    // file when one cannot be read or has not the pages it claims.
    void append(QPDF& doc, const QList<PdfFinish::Sheet>& sheets);

private:
    // Read once per file, kept until the package is written: qpdf copies their streams then.
    std::vector<std::unique_ptr<QPDF>> m_sources;
    std::map<const char*, QPDF*> m_byData;
    // A copied page's form, shared by every place the page prints.
    std::map<QPDFObjGen, QPDFObjectHandle> m_forms;
    QPDFObjectHandle m_font;
};

}  // namespace ZebPackage
