#pragma once

#include "zebobjects_export.h"

#include <QByteArray>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace ZebObjects {

class CustomerDirectory;
class StandaloneBOM;
class StandaloneCustomers;
class StandaloneLabels;
class StandaloneLineItems;
class StandaloneRecipients;
class StandaloneSubmittal;
class StandaloneTextObjects;

// A sample job, the Riverside Medical Office Building, for hosts without a database and for
// tests. Every call builds new objects: nothing is shared between two calls.
class ZEBOBJECTS_EXPORT SampleData {
public:
    static QString jobName();
    // Paragraphs of the cover letter; one runs over several lines (CR-LF).
    static std::shared_ptr<StandaloneTextObjects> coverLetterParagraphs();
    static std::shared_ptr<StandaloneTextObjects> coverLetterRemarks();
    // The texts of the default remarks at the bottom of the bill of materials.
    static QStringList bomRemarkTexts();
    // The texts of one kind (TextKind); an unknown kind gives an empty collection of that kind.
    static std::shared_ptr<StandaloneTextObjects> textObjects(qint32 kind);
    // Three recipients.
    static std::shared_ptr<StandaloneRecipients> recipients();
    static std::shared_ptr<StandaloneSubmittal> submittal();
    // Some columns chosen, default remarks filled.
    static std::shared_ptr<StandaloneBOM> bom();
    // The fields of a mailing label; company, attention, street and city/state/zip on the label.
    static std::shared_ptr<StandaloneLabels> labels();
    // Twenty fixture lines.
    static std::shared_ptr<StandaloneLineItems> lineItems();
    // Every customer of the sample sales office; a few accounts are closed.
    static std::shared_ptr<CustomerDirectory> customerDirectory();
    // The submittal's customers: two from the directory, both included.
    static std::shared_ptr<StandaloneCustomers> customers();
    static QStringList issuedByNames();
    // An e-mail address of the sample's making for a person at a company.
    static QString emailFor(const QString& person, const QString& company);
    // The sample office's logo as PNG bytes: the agency's mark.
    static QByteArray logo();
    // The search context of the sample user.
    static QVariant searchContextValue();
};

}  // namespace ZebObjects
