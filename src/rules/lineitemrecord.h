#pragma once

#include <QString>

#include <optional>

namespace ZebObjects {

// One line of a bill of materials as a job holds it.
struct LineItemRecord {
    qint32 quantity = 0;
    QString type;
    QString brand;
    QString catalogNumber;
    QString description;
    QString group;
    bool mto = false;
    // No value: the line has no comment. An empty text is a comment all the same.
    std::optional<QString> comment;
    bool selected = false;
};

}  // namespace ZebObjects
