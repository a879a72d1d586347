#pragma once

#include "objects/standalonecustomer.h"
#include "store/jobcontents.h"

#include <QList>

namespace ZebObjects {

class Store;

// A realistic sales office for a new store: four jobs of different sizes, a customer directory
// of several hundred customers, the issuers and the paragraph and remark libraries. The same
// office every time: nothing in it is random.
class SampleOffice {
public:
    static constexpr qint32 LargeJobLineCount = 744;

    // Fills an empty store in one transaction; a store that already holds anything fails with
    // 457 and is left as it was.
    static void fill(Store& store);

    // The jobs, as they go into the store.
    static JobContents smallJob();
    static JobContents riverside();
    static JobContents warehouse();
    static JobContents largeJob();
    // Every customer of the office's directory.
    static QList<StandaloneCustomer::Data> directory();
    static QStringList issuedByNames();
};

}  // namespace ZebObjects
