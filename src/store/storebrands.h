#pragma once

#include "zebstore_export.h"

#include "rules/brandrecord.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

namespace ZebObjects {

class StoreConnection;

// The office's brands and who makes each: the bill of materials prints a line's manufacturer
// from here. A brand's name is unique in the office; each change is one transaction, or joins
// the caller's (Store::writeAll).
class ZEBSTORE_EXPORT StoreBrands {
public:
    explicit StoreBrands(std::shared_ptr<StoreConnection> db);

    // In name order.
    QList<BrandRecord> all() const;
    // Brand name -> manufacturer; one statement.
    QHash<QString, QString> manufacturers() const;
    qint32 lineCount(const QString& name) const;
    // Brand name -> how many lines of the office's jobs use it; one statement.
    QHash<QString, qint32> lineCounts() const;

    // An empty name fails with 5, a name the office has with 457.
    void add(const BrandRecord& brand);
    // The lines of every job that use the brand take the new name with it; the revisions already
    // issued keep what they printed. A brand not held fails with 35601, a new name another brand
    // has with 457, an empty one with 5.
    void rename(const QString& name, const QString& newName);
    // A brand not held fails with 35601.
    void setManufacturer(const QString& name, const QString& manufacturer);
    // A brand that lines use is kept and fails with 5, saying how many lines use it; a brand not
    // held fails with 35601.
    void remove(const QString& name);

    // Adds each brand of brands the office does not have yet (a brand it has without a
    // manufacturer takes the one given); empty names are passed over. Answers how many brands
    // were added.
    qint32 addMissing(const QList<BrandRecord>& brands);

private:
    void requireHeld(const QString& name) const;
    std::shared_ptr<StoreConnection> m_db;
};

}  // namespace ZebObjects
