#pragma once

#include "rules/labelrules.h"
#include "rules/customerrecord.h"
#include "rules/lineitemrecord.h"
#include "rules/submittalrules.h"

#include <QList>
#include <QString>

namespace ZebObjects {

// Everything a new job starts with: its submittal and all the submittal holds.
struct JobContents {
    struct Text {
        QString text;
        bool selected = false;
    };
    struct Recipient {
        QString name;
        QString company;
        // Where the letter goes.
        QString street;
        QString street2;
        QString city;
        QString state;
        QString zip;
        QString phone;
        QString email;

        friend bool operator==(const Recipient&, const Recipient&) = default;
    };
    struct LabelField {
        QString key;
        QString caption;
        // 0: off the label. Fields beyond the label's limit stay off.
        qint16 printOrder = 0;
    };

    QString number;
    QString name;
    QString purchaseOrder;
    QString siteAddress;
    QString architect;
    QString engineer;
    QString contractor;

    QString issuedBy;
    QString submittalDate;
    bool includeCoverLetter = false;
    bool includeBOM = false;
    bool includeLabels = false;
    SubmittalRules::Purpose purpose;

    bool includeLogo = false;
    bool includeDefaultParagraphs = false;
    bool includeRemarks = false;
    bool separateLetters = false;
    bool includeCarbonCopy = false;
    QList<Recipient> recipients;

    QList<Text> paragraphs;
    QList<Text> remarks;

    bool includeQuantity = false;
    bool includeType = false;
    bool includeDefaultRemarks = false;
    bool includeBrand = false;
    bool includeManufacturer = false;
    bool includeCatalogNumber = false;
    bool includeDescription = false;
    bool includeLineComments = false;
    bool includeMTO = false;
    bool includeGroupCodes = false;
    QList<Text> bomRemarks;

    QList<LabelField> labelFields;
    qint16 labelLimit = LabelRules::DefaultMaximum;

    QList<LineItemRecord> lines;
    // Keyed by their own keys; included as the data says.
    QList<CustomerRecord> customers;
};

}  // namespace ZebObjects
