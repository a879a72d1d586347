// A host that implements the business-object contracts with nothing but the contracts library.
#include "contracts/applicationservices.h"
#include "contracts/bom.h"
#include "contracts/coverletter.h"
#include "contracts/customer.h"
#include "contracts/customerfinder.h"
#include "contracts/customers.h"
#include "contracts/customersearchcontext.h"
#include "contracts/customersearchresult.h"
#include "contracts/diagnosticlog.h"
#include "contracts/failure.h"
#include "contracts/labelfield.h"
#include "contracts/labelfields.h"
#include "contracts/labels.h"
#include "contracts/lineitem.h"
#include "contracts/lineitemcomment.h"
#include "contracts/lineitems.h"
#include "contracts/recipients.h"
#include "contracts/submittal.h"
#include "contracts/textobjects.h"

#include <QSignalSpy>
#include <QTest>

using namespace ZebObjects;

namespace {

class HostText : public TextObject {
public:
    HostText(QString key, QString text) : m_key(std::move(key)), m_text(std::move(text)) { }
    QString Key() const override { return m_key; }
    QString Text() const override { return m_text; }
    void setText(const QString& text) override { m_text = text; }
    bool Selected() const override { return m_selected; }
    void setSelected(bool selected) override { m_selected = selected; }

private:
    QString m_key;
    QString m_text;
    bool m_selected = false;
};

class HostTexts : public TextObjects {
public:
    qint32 TextObjectType() const override { return m_type; }
    void setTextObjectType(qint32 type) override { m_type = type; }
    bool IsDirty() const override { return false; }
    std::shared_ptr<TextObject> Item(const QString& key) const override
    {
        for (const auto& t : m_items)
            if (t->Key() == key)
                return t;
        throw Failure(ErrorNumber::SubscriptOutOfRange, QStringLiteral("Host"),
                      QStringLiteral("missing"));
    }
    std::shared_ptr<TextObject> Item(qint32 position) const override
    {
        return m_items.at(position - 1);
    }
    qint32 Count() const override { return qint32(m_items.size()); }
    std::shared_ptr<TextObject> Add(const QString& text, bool selected) override
    {
        auto t = std::make_shared<HostText>(QString::number(m_items.size() + 1), text);
        t->setSelected(selected);
        m_items.append(t);
        emit ItemAdded(t->Key());
        emit Changed();
        return t;
    }
    void Remove(const QString& key) override
    {
        m_items.removeOne(Item(key));
        emit ItemDeleted(key);
    }
    void MoveDown(const QString&) override { }
    void MoveUp(const QString&) override { }
    void SaveOrder() override { emit OrderSaved(); }
    TextObjectList Enumerate() const override { return m_items; }

private:
    TextObjectList m_items;
    qint32 m_type = 0;
};

class HostField : public LabelField {
public:
    QString Caption() const override { return QStringLiteral("Company"); }
    QString Key() const override { return QStringLiteral("COMPANY"); }
    bool Included() const override { return m_order != 0; }
    qint16 PrintOrder() const override { return m_order; }
    void setPrintOrder(qint16 order) override { m_order = order; }

private:
    qint16 m_order = 0;
};

class HostFields : public LabelFields {
public:
    std::shared_ptr<LabelField> Item(const QString& key) const override
    {
        if (key != m_field->Key())
            throw Failure(ErrorNumber::SubscriptOutOfRange, QStringLiteral("Host"),
                          QStringLiteral("missing"));
        return m_field;
    }
    qint16 Count() const override { return 1; }
    LabelFieldList Enumerate() const override { return {m_field}; }

private:
    std::shared_ptr<HostField> m_field = std::make_shared<HostField>();
};

class HostLabels : public Labels {
public:
    std::shared_ptr<ZebObjects::LabelFields> LabelFields() const override { return m_fields; }

private:
    std::shared_ptr<HostFields> m_fields = std::make_shared<HostFields>();
};

class HostLetter : public CoverLetter {
public:
    bool IncludeLogo() const override { return true; }
    void setIncludeLogo(bool) override { }
    bool IncludeDefaultParagraphs() const override { return false; }
    void setIncludeDefaultParagraphs(bool) override { }
    bool IncludeRemarks() const override { return false; }
    void setIncludeRemarks(bool) override { }
    bool SeparateLetters() const override { return false; }
    void setSeparateLetters(bool) override { }
    bool IncludeCarbonCopy() const override { return false; }
};

class HostRecipient : public Recipient {
public:
    QString Name() const override { return QStringLiteral("R"); }
    QString Company() const override { return QStringLiteral("C"); }
};

class HostRecipients : public Recipients {
public:
    qint16 Count() const override { return 1; }
    std::shared_ptr<Recipient> Item(qint16) const override
    {
        return std::make_shared<HostRecipient>();
    }
    RecipientList Enumerate() const override { return {Item(1)}; }
};

class HostSubmittal : public Submittal {
public:
    QString IssuedBy() const override { return m_issuedBy; }
    void setIssuedBy(const QString& name) override
    {
        m_issuedBy = name;
        emit IssuedByChanged();
    }
    QString SubmittalDate() const override { return {}; }
    void setSubmittalDate(const QString&) override { emit SubmittalDateChanged(); }
    bool IncludeCoverLetter() const override { return false; }
    void setIncludeCoverLetter(bool) override { emit CoverLetterChanged(); }
    std::shared_ptr<ZebObjects::CoverLetter> CoverLetter() const override
    {
        return std::make_shared<HostLetter>();
    }
    bool IncludeBOM() const override { return false; }
    void setIncludeBOM(bool) override { emit BOMChanged(); }
    bool IncludeLabels() const override { return false; }
    void setIncludeLabels(bool) override { emit LabelsChanged(); }
    std::shared_ptr<ZebObjects::Recipients> Recipients() const override
    {
        return std::make_shared<HostRecipients>();
    }
    QString SubmittalPurpose() const override { return {}; }
    void setSubmittalPurpose(const QString&) override { }
    QString SelectPurpose(qint16 index) override
    {
        m_index = index;
        emit SubmittalPurposeChanged(index);
        return QStringLiteral("Purpose %1").arg(index);
    }
    qint16 SubmittalPurposeIndex() const override { return m_index; }

private:
    QString m_issuedBy;
    qint16 m_index = 0;
};

class HostBOM : public BOM {
public:
    bool IncludeQuantity() const override { return true; }
    void setIncludeQuantity(bool) override { }
    bool IncludeType() const override { return true; }
    void setIncludeType(bool) override { }
    bool IncludeDefaultRemarks() const override { return true; }
    void setIncludeDefaultRemarks(bool) override { }
    std::shared_ptr<TextObjects> DefaultRemarks() const override { return m_remarks; }
    bool IncludeBrand() const override { return true; }
    void setIncludeBrand(bool) override { }
    bool IncludeManufacturer() const override { return true; }
    void setIncludeManufacturer(bool) override { }
    bool IncludeCatalogNumber() const override { return true; }
    void setIncludeCatalogNumber(bool) override { }
    bool IncludeDescription() const override { return true; }
    void setIncludeDescription(bool) override { }
    bool IncludeLineComments() const override { return true; }
    void setIncludeLineComments(bool) override { }
    bool IncludeMTO() const override { return true; }
    void setIncludeMTO(bool) override { }
    bool IncludeGroupCodes() const override { return true; }
    void setIncludeGroupCodes(bool) override { }
    void refill()
    {
        m_remarks = std::make_shared<HostTexts>();
        emit RemarksPopulated();
    }

private:
    std::shared_ptr<HostTexts> m_remarks = std::make_shared<HostTexts>();
};

class HostComment : public LineItemComment {
public:
    QString Text() const override { return QStringLiteral("note"); }
};

class HostLine : public LineItem {
public:
    bool Selected() const override { return m_selected; }
    void setSelected(bool selected) override { m_selected = selected; }
    QString Quantity() const override { return QStringLiteral("2"); }
    QString Type() const override { return QStringLiteral("A"); }
    QString Brand() const override { return {}; }
    QString CatalogNumber() const override { return {}; }
    QString Description() const override { return {}; }
    QString Group() const override { return {}; }
    bool MTO() const override { return false; }
    std::shared_ptr<LineItemComment> Comment() const override
    {
        return std::make_shared<HostComment>();
    }

private:
    bool m_selected = false;
};

class HostLines : public LineItems {
public:
    qint16 Count() const override { return 1; }
    std::shared_ptr<LineItem> Item(qint16) const override { return m_line; }
    LineItemList Enumerate() const override { return {m_line}; }

private:
    std::shared_ptr<HostLine> m_line = std::make_shared<HostLine>();
};

class HostCustomer : public Customer {
public:
    QString Key() const override { return QStringLiteral("K"); }
    QString DisplayText() const override { return QStringLiteral("Host Customer"); }
    QString Name() const override { return QStringLiteral("Host"); }
    QString AccountNumber() const override { return QStringLiteral("1"); }
    QString City() const override { return {}; }
    QString State() const override { return {}; }
    QString Type() const override { return {}; }
    QString Category() const override { return {}; }
    bool Included() const override { return m_included; }
    void setIncluded(bool included) override { m_included = included; }

private:
    bool m_included = false;
};

class HostCustomers : public Customers {
public:
    bool Add(const QString&, std::shared_ptr<Customer> customer) override
    {
        m_items.append(std::move(customer));
        return true;
    }
    void Remove(qint16 index) override
    {
        m_items.removeAt(index - 1);
        emit CustomerRemoved(index);
    }
    void RemoveAll() override
    {
        while (!m_items.isEmpty())
            Remove(1);
    }
    std::shared_ptr<Customer> Item(qint16 index) const override { return m_items.at(index - 1); }
    qint16 Count() const override { return qint16(m_items.size()); }
    CustomerList Enumerate() const override { return m_items; }

private:
    CustomerList m_items;
};

class HostResult : public CustomerSearchResult {
public:
    std::shared_ptr<Customer> ChosenCustomer() const override
    {
        return std::make_shared<HostCustomer>();
    }
};

class HostFinder : public CustomerFinder {
public:
    std::shared_ptr<CustomerSearchResult> Search(bool, bool, bool, bool, bool,
                                                 const QVariant& context, const QString& keyword,
                                                 const QString&, const QString&, const QString&,
                                                 const QString&, const QString&, const QString&,
                                                 const QString&, qint32) override
    {
        lastContext = context;
        if (keyword.isEmpty())
            return nullptr;
        return std::make_shared<HostResult>();
    }
    QVariant lastContext;
};

class HostContext : public CustomerSearchContext {
public:
    QVariant Value() const override { return QStringLiteral("host-user"); }
};

class HostServices : public ApplicationServices {
public:
    bool ReformatText(QString&) override { return false; }
    QStringList IssuedByNames() const override { return {QStringLiteral("Host Issuer")}; }
    std::shared_ptr<CustomerSearchContext> SearchContext() const override
    {
        return std::make_shared<HostContext>();
    }
    std::shared_ptr<CustomerFinder> CreateCustomerFinder() override
    {
        return std::make_shared<HostFinder>();
    }
};

class HostLog : public DiagnosticLog {
public:
    void LogError(const QString& m, const QString& l, const ErrorInfo& e, qint32) override
    {
        lines << m + QLatin1Char('|') + l + QLatin1Char('|') + QString::number(e.Number);
    }
    void LogNotice(const QString&, const QString&, const ErrorInfo&, qint32) override { }
    void LogWarning(const QString&, const QString&, const ErrorInfo&, qint32) override { }
    void Trace(const QString&, const QString&, QString, qint32) override { }
    QStringList lines;
};

}  // namespace

class TestContractsAlone : public QObject {
    Q_OBJECT
private slots:
    void aHostTextCollectionRaisesTheContractEvents()
    {
        HostTexts texts;
        QSignalSpy added(&texts, &TextObjects::ItemAdded);
        QSignalSpy changed(&texts, &TextObjects::Changed);
        const auto t = texts.Add(QStringLiteral("Hello"), true);
        QCOMPARE(added.count(), 1);
        QCOMPARE(added.at(0).at(0).toString(), t->Key());
        QCOMPARE(changed.count(), 1);
        QCOMPARE(texts.Enumerate().size(), 1);
        QVERIFY_THROWS_EXCEPTION(Failure, texts.Item(QStringLiteral("x")));
    }

    void aHostLabelFieldIsWritableByNameAndOverflowFailsWithSix()
    {
        HostLabels labels;
        const auto field = labels.LabelFields()->Item(QStringLiteral("COMPANY"));
        QVERIFY(field->setProperty("PrintOrder", QVariant(qint32(4))));
        QCOMPARE(field->PrintOrder(), qint16(4));
        QCOMPARE(field->property("PrintOrder").toInt(), 4);
        QCOMPARE(field->Included(), true);
        try {
            field->setProperty("PrintOrder", QVariant(qint32(65536)));
            QFAIL("no failure");
        } catch (const Failure& f) {
            QCOMPARE(f.Number(), ErrorNumber::Overflow);
            QCOMPARE(f.Source(), QStringLiteral("ZebObjects.LabelField"));
            QCOMPARE(f.Description(),
                     QStringLiteral("Overflow: a print order of 65536 does not fit 16 bits"));
            QCOMPARE(QByteArray(f.what()),
                     QByteArray("6 - Overflow: a print order of 65536 does not fit 16 bits"));
        }
        QCOMPARE(field->PrintOrder(), qint16(4));
    }

    void aHostSubmittalRaisesItsEvents()
    {
        HostSubmittal s;
        QSignalSpy issued(&s, &Submittal::IssuedByChanged);
        QSignalSpy purpose(&s, &Submittal::SubmittalPurposeChanged);
        s.setIssuedBy(QStringLiteral("X"));
        QCOMPARE(s.SelectPurpose(7), QStringLiteral("Purpose 7"));
        QCOMPARE(issued.count(), 1);
        QCOMPARE(purpose.count(), 1);
        QCOMPARE(purpose.at(0).at(0).value<qint16>(), qint16(7));
        QCOMPARE(s.Recipients()->Count(), qint16(1));
        QVERIFY(s.CoverLetter()->IncludeLogo());
    }

    void aHostBomRaisesRemarksPopulated()
    {
        HostBOM bom;
        QSignalSpy populated(&bom, &BOM::RemarksPopulated);
        const auto before = bom.DefaultRemarks();
        bom.refill();
        QCOMPARE(populated.count(), 1);
        QVERIFY(bom.DefaultRemarks() != before);
    }

    void aHostLineCollectionAndCustomersWork()
    {
        HostLines lines;
        QCOMPARE(qsizetype(lines.Count()), lines.Enumerate().size());
        QCOMPARE(lines.Item(1)->Comment()->Text(), QStringLiteral("note"));
        HostCustomers customers;
        QSignalSpy removed(&customers, &Customers::CustomerRemoved);
        customers.Add(QStringLiteral("K"), std::make_shared<HostCustomer>());
        customers.Add(QStringLiteral("L"), std::make_shared<HostCustomer>());
        customers.RemoveAll();
        QCOMPARE(removed.count(), 2);
        QCOMPARE(customers.Count(), qint16(0));
    }

    void aHostFinderGetsTheContextOfTheHostServices()
    {
        HostServices services;
        auto finder = services.CreateCustomerFinder();
        const auto result =
            finder->Search(false, true, false, false, false, services.SearchContext()->Value(),
                           QStringLiteral("kw"), {}, {}, {}, {}, {}, {}, {}, 0);
        QCOMPARE(result->ChosenCustomer()->Name(), QStringLiteral("Host"));
        QCOMPARE(static_cast<HostFinder&>(*finder).lastContext,
                 QVariant(QStringLiteral("host-user")));
        HostLog log;
        log.LogError(QStringLiteral("m"), QStringLiteral("l"), ErrorInfo{9, {}, {}}, 0);
        QCOMPARE(log.lines, QStringList{QStringLiteral("m|l|9")});
    }
};

QTEST_GUILESS_MAIN(TestContractsAlone)
#include "tst_contractsalone.moc"
