#include "objects/standalonelabelfields.h"

#include "rules/collectionrules.h"
#include "rules/labelrules.h"
#include "objects/standalonelabelfield.h"

#include <algorithm>
#include <vector>

namespace ZebObjects {

namespace {
const QString kSource = QStringLiteral("ZebObjects.LabelFields");
}

// Shared with the fields, which ask it for room; they hold it weakly, so a field that outlives
// its collection is simply a field of no collection.
struct StandaloneLabelFields::State {
    std::vector<std::shared_ptr<StandaloneLabelField>> fields;
    qint16 maximum = LabelRules::DefaultMaximum;

    qint16 included() const
    {
        return qint16(std::count_if(fields.begin(), fields.end(),
                                    [](const auto& f) { return f->printOrder() != 0; }));
    }
};

StandaloneLabelFields::StandaloneLabelFields() : m_state(std::make_shared<State>()) { }

StandaloneLabelFields::~StandaloneLabelFields() = default;

std::shared_ptr<LabelField> StandaloneLabelFields::Item(const QString& key) const
{
    check("Item");
    return field(key);
}

qint16 StandaloneLabelFields::Count() const
{
    check("Count");
    return qint16(m_state->fields.size());
}

LabelFieldList StandaloneLabelFields::Enumerate() const
{
    check("Enumerate");
    std::vector<std::shared_ptr<StandaloneLabelField>> order = m_state->fields;
    std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) {
        return LabelRules::comesBefore(a->printOrder(), b->printOrder());
    });
    return LabelFieldList(order.begin(), order.end());
}

std::shared_ptr<StandaloneLabelField> StandaloneLabelFields::Add(const QString& key,
                                                                 const QString& caption,
                                                                 qint16 printOrder)
{
    check("Add");
    const auto& fields = m_state->fields;
    if (std::any_of(fields.begin(), fields.end(), [&](const auto& f) { return f->key() == key; }))
        throw CollectionRules::duplicateKey(kSource, key);
    auto field = std::make_shared<StandaloneLabelField>(key, caption);
    std::weak_ptr<State> state = m_state;
    field->setRoom([state] {
        const auto s = state.lock();
        return !s || LabelRules::admits(0, 1, s->included(), s->maximum);
    });
    // Placed before it joins the collection: its order is checked against the others only.
    field->setPrintOrder(printOrder);
    m_state->fields.push_back(field);
    return field;
}

std::shared_ptr<StandaloneLabelField> StandaloneLabelFields::field(const QString& key) const
{
    const auto& fields = m_state->fields;
    const auto it =
        std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f->key() == key; });
    if (it == fields.end())
        throw CollectionRules::missingKey(kSource, QStringLiteral("label field"), key);
    return *it;
}

qint16 StandaloneLabelFields::maximumIncluded() const
{
    return m_state->maximum;
}

void StandaloneLabelFields::setMaximumIncluded(qint16 maximum)
{
    m_state->maximum = maximum;
}

qint16 StandaloneLabelFields::includedCount() const
{
    return m_state->included();
}

}  // namespace ZebObjects
