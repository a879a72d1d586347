#pragma once

// What the business objects of one submittal should hold after a session of user actions,
// worked out by the random session test from the rules of each control alone: every user action
// updates this model the way the control is meant to write into its object, and the test then
// compares the real objects (and what the controls show) with it.

#include "frame/messageboxes.h"
#include "objects/standalonecustomer.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

namespace ZebTest {

struct ShadowParagraph {
    QString text;
    bool selected = false;
    friend bool operator==(const ShadowParagraph&, const ShadowParagraph&) = default;
};

// A text collection shown by a text list control.
struct ShadowTexts {
    QString name;
    QList<ShadowParagraph> items;
    bool dirty = false;
    // Whether a Changed event has set Save Changes since binding.
    bool saveKnown = false;
    bool allowSave = false;
};

struct ShadowSubmittal {
    bool includeCoverLetter = false;
    bool includeBOM = false;
    bool includeLabels = false;
    QString issuedBy;
    QString date;
    qint16 purposeIndex = 0;
    QString purpose;
    // The purpose of the user's own, behind option 7.
    QString otherPurpose;
    // Cover letter options.
    bool logo = false;
    bool paragraphs = false;
    bool remarks = false;
    bool separate = false;
    bool carbonCopy = false;
    // Whether "Print Carbon Copy Information" is still on show.
    bool carbonCopyShown = true;
};

struct ShadowLabels {
    QStringList available;
    QStringList selected;
    QMap<QString, qint16> printOrder;
    qint16 maximum = 5;
};

struct ShadowCustomer {
    QString key;
    bool included = false;
    friend bool operator==(const ShadowCustomer&, const ShadowCustomer&) = default;
};

struct ShadowCustomers {
    QList<ShadowCustomer> rows;
    std::optional<ZebObjects::StandaloneCustomer::Data> found;
};

struct ShadowSession {
    ShadowTexts paragraphs;
    ShadowTexts remarks;
    ShadowTexts bomRemarks;
    ShadowSubmittal submittal;
    // The ten column flags of the bill of materials, by check box name.
    QMap<QString, bool> bom;
    ShadowLabels labels;
    QList<bool> lineSelected;
    ShadowCustomers customers;
    // The message boxes the last action should have shown.
    QList<ZebSubCtl::ScriptedMessageBoxService::Shown> boxes;
    // The failures the last action should have logged, as "module|number" (a duplicate customer
    // is reported through the error path, so it is logged as well as shown).
    QStringList failures;
    // The writes the last action should have made, by object: member writes ("IncludeBOM=") and
    // calls that change a collection ("Add", "MoveUp", ...), in order.
    QMap<QString, QStringList> writes;
};

}  // namespace ZebTest
