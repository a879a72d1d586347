#pragma once

// The host's own business objects, as small as the contracts allow: a list of paragraphs and a
// customer book. A real host keeps these in its database; the controls only see the contracts.

#include "contracts/customer.h"
#include "contracts/customerfinder.h"
#include "contracts/customers.h"
#include "contracts/customersearchresult.h"
#include "contracts/textobject.h"
#include "contracts/textobjects.h"

#include <QList>
#include <QString>

#include <memory>

namespace HostForm {

class Paragraph : public ZebObjects::TextObject {
public:
    Paragraph(QString key, QString text, bool selected);

    QString Key() const override { return m_key; }
    QString Text() const override { return m_text; }
    void setText(const QString& text) override { m_text = text; }
    bool Selected() const override { return m_selected; }
    void setSelected(bool selected) override { m_selected = selected; }

private:
    QString m_key;
    QString m_text;
    bool m_selected;
};

// An ordered list of paragraphs with keys "1", "2", ... Every change raises its own event and
// then Changed, as the paragraph list expects.
class Paragraphs : public ZebObjects::TextObjects {
    Q_OBJECT
public:
    qint32 TextObjectType() const override { return m_type; }
    void setTextObjectType(qint32 type) override { m_type = type; }
    bool IsDirty() const override { return m_dirty; }
    std::shared_ptr<ZebObjects::TextObject> Item(const QString& key) const override;
    std::shared_ptr<ZebObjects::TextObject> Item(qint32 position) const override;
    qint32 Count() const override { return qint32(m_items.size()); }
    std::shared_ptr<ZebObjects::TextObject> Add(const QString& text, bool selected) override;
    void Remove(const QString& key) override;
    void MoveDown(const QString& key) override { move(key, +1); }
    void MoveUp(const QString& key) override { move(key, -1); }
    void SaveOrder() override;
    ZebObjects::TextObjectList Enumerate() const override;

private:
    qsizetype indexOf(const QString& key) const;
    void move(const QString& key, int step);

    QList<std::shared_ptr<Paragraph>> m_items;
    qint32 m_type = 0;
    qint32 m_nextKey = 1;
    bool m_dirty = false;
};

class Client : public ZebObjects::Customer {
public:
    Client(QString account, QString name, QString city, QString state);

    QString Key() const override { return m_account; }
    QString DisplayText() const override { return m_name + QStringLiteral(" (") + m_city + u')'; }
    QString Name() const override { return m_name; }
    QString AccountNumber() const override { return m_account; }
    QString City() const override { return m_city; }
    QString State() const override { return m_state; }
    QString Type() const override { return QStringLiteral("Contractor"); }
    QString Category() const override { return QStringLiteral("Electrical"); }
    bool Included() const override { return m_included; }
    void setIncluded(bool included) override { m_included = included; }

private:
    QString m_account;
    QString m_name;
    QString m_city;
    QString m_state;
    bool m_included = false;
};

// The customers a submittal goes to, keyed by account number.
class Clients : public ZebObjects::Customers {
    Q_OBJECT
public:
    bool Add(const QString& key, std::shared_ptr<ZebObjects::Customer> customer) override;
    void Remove(qint16 index) override;
    void RemoveAll() override;
    std::shared_ptr<ZebObjects::Customer> Item(qint16 index) const override;
    qint16 Count() const override { return qint16(m_items.size()); }
    ZebObjects::CustomerList Enumerate() const override { return m_items; }

private:
    ZebObjects::CustomerList m_items;
};

// Looks customers up in the host's address book by part of the name or by account number. A
// search that matches several customers settles on none: a real host would let the user choose
// in a dialog of its own.
class ClientFinder : public ZebObjects::CustomerFinder {
public:
    explicit ClientFinder(QList<std::shared_ptr<Client>> book);

    std::shared_ptr<ZebObjects::CustomerSearchResult> Search(
        bool includeInactive, bool interactive, bool exactName, bool matchAny,
        bool sortByAccountNumber, const QVariant& context, const QString& keyword,
        const QString& accountNumber, const QString& city, const QString& state, const QString& zip,
        const QString& phone, const QString& type, const QString& category,
        qint32 maximumResults) override;

private:
    QList<std::shared_ptr<Client>> m_book;
};

}  // namespace HostForm
