// A host that knows the library only through its installed package: its own business objects on
// the contracts, a control created by identifier and bound by property name, its own services.
#include "contracts/applicationservices.h"
#include "contracts/diagnosticlog.h"
#include "contracts/runtime.h"
#include "contracts/textobjects.h"
#include "frame/controlregistry.h"
#include "frame/libraryinfo.h"
#include "frame/usercontrol.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>

#include <cstdio>

namespace {

class Paragraph : public ZebObjects::TextObject {
public:
    Paragraph(QString key, QString text) : m_key(std::move(key)), m_text(std::move(text)) { }
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

class Paragraphs : public ZebObjects::TextObjects {
public:
    qint32 TextObjectType() const override { return m_type; }
    void setTextObjectType(qint32 type) override { m_type = type; }
    bool IsDirty() const override { return false; }
    std::shared_ptr<ZebObjects::TextObject> Item(const QString& key) const override
    {
        for (const auto& p : m_items)
            if (p->Key() == key)
                return p;
        throw ZebObjects::Failure(9, QStringLiteral("Host.Paragraphs"),
                                  QStringLiteral("Subscript out of range"));
    }
    std::shared_ptr<ZebObjects::TextObject> Item(qint32 position) const override
    {
        if (position < 1 || position > m_items.size())
            throw ZebObjects::Failure(9, QStringLiteral("Host.Paragraphs"),
                                      QStringLiteral("Subscript out of range"));
        return m_items[position - 1];
    }
    qint32 Count() const override { return qint32(m_items.size()); }
    std::shared_ptr<ZebObjects::TextObject> Add(const QString& text, bool selected) override
    {
        auto p = std::make_shared<Paragraph>(QString::number(++m_next), text);
        p->setSelected(selected);
        m_items.append(p);
        emit ItemAdded(p->Key());
        return p;
    }
    void Remove(const QString& key) override
    {
        m_items.removeOne(Item(key));
        emit ItemDeleted(key);
    }
    void MoveDown(const QString&) override { }
    void MoveUp(const QString&) override { }
    void SaveOrder() override { emit OrderSaved(); }
    ZebObjects::TextObjectList Enumerate() const override { return m_items; }

private:
    ZebObjects::TextObjectList m_items;
    qint32 m_type = 1;
    qint32 m_next = 0;
};

// The host's services: only the text rule matters to this form.
class Services : public ZebObjects::ApplicationServices {
public:
    bool ReformatText(QString&) override { return false; }
    QStringList IssuedByNames() const override { return {QStringLiteral("Front Desk")}; }
    std::shared_ptr<ZebObjects::CustomerSearchContext> SearchContext() const override
    {
        return nullptr;
    }
    std::shared_ptr<ZebObjects::CustomerFinder> CreateCustomerFinder() override { return nullptr; }
};

}  // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    using namespace ZebSubCtl;
    if (LibraryInfo::Name() != QStringLiteral("ZebSubmittalControls")
        || LibraryInfo::Version() != QStringLiteral("4.09.0040"))
        return 1;

    // Before the host installs anything, the services slot says what is missing.
    try {
        ZebObjects::Runtime::applicationServices();
        return 2;
    } catch (const ZebObjects::Failure& f) {
        if (f.Number() != 91)
            return 2;
    }
    ZebObjects::Runtime::setApplicationServices(std::make_shared<Services>());

    const QStringList ids = ControlRegistry::instance().identifiers();
    QWidget form;
    for (const QString& id : ids) {
        UserControl* control = ControlRegistry::instance().create(id, &form);
        if (!control || id != ControlRegistry::identifierFor(control->Name()))
            return 3;
        std::printf("created %s\n", qPrintable(id));
    }

    // A paragraph list over the host's own collection, bound by property name.
    auto paragraphs = std::make_shared<Paragraphs>();
    paragraphs->Add(QStringLiteral("Thank you for the opportunity."), true);
    UserControl* text = ControlRegistry::instance().create(
        ControlRegistry::identifierFor(QStringLiteral("ctlTextSelect")), &form);
    if (!text
        || !text->setProperty(
            "TextObjects",
            QVariant::fromValue(std::shared_ptr<ZebObjects::TextObjects>(paragraphs)))
        || !text->setProperty("AllowUpdate", true))
        return 4;
    form.show();
    if (!QTest::qWaitForWindowExposed(&form))
        return 5;
    auto* entry = text->findChild<QWidget*>(QStringLiteral("txtNewComment"));
    auto* add = text->findChild<QPushButton*>(QStringLiteral("cmdAdd"));
    if (!entry || !add)
        return 6;
    QTest::keyClicks(entry, QStringLiteral("Please call with questions."));
    QTest::mouseClick(add, Qt::LeftButton);
    if (paragraphs->Count() != 2
        || paragraphs->Item(qint32(2))->Text() != QStringLiteral("Please call with questions."))
        return 7;
    std::printf("consumer ok: %lld controls, %d paragraphs\n", static_cast<long long>(ids.size()),
                int(paragraphs->Count()));
    return 0;
}
