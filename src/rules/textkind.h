#pragma once

#include <QtGlobal>

// The kinds of text a text collection can hold: the values of TextObjects::TextObjectType.
namespace ZebObjects::TextKind {
inline constexpr qint32 Unspecified = 0;
inline constexpr qint32 CoverLetterParagraph = 1;
inline constexpr qint32 CoverLetterRemark = 2;
inline constexpr qint32 BOMRemark = 3;
}  // namespace ZebObjects::TextKind
