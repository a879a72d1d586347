#pragma once

#include <QLabel>
#include <QLatin1String>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>

#include <optional>
#include <type_traits>
#include <utility>

namespace ZebSubCtl {

// Makes one of a control's child widgets: constructed with args and the parent last, named for
// findChild and screen readers' fallbacks, and put at its design place (a null place leaves it
// where the widget puts itself).
template <class W, class... Args>
W* makeChild(QWidget* parent, const char* name, const QRect& place, Args&&... args)
{
    auto* child = new W(std::forward<Args>(args)..., parent);
    child->setObjectName(QLatin1String(name));
    if (!place.isNull())
        child->setGeometry(place);
    return child;
}

// What a child takes beyond its constructor's arguments and its place. Only what is given is
// applied; the rest stays as the widget has it. Made in the call, setting by setting:
// ChildSettings().movedTo(point).named(name, description).
struct ChildSettings {
    // The top left corner of a child that sizes itself (a picture), in its parent's pixels.
    std::optional<QPoint> at;
    // A label's text format, alignment in its place and word wrap.
    std::optional<Qt::TextFormat> textFormat;
    std::optional<Qt::Alignment> alignment;
    std::optional<bool> wordWrap;
    // Bold text, as the headings over a control's groups show it.
    bool bold = false;
    QString toolTip;
    // For a child that shows no caption of its own, what screen readers say of it.
    QString accessibleName;
    QString accessibleDescription;

    ChildSettings& movedTo(QPoint point)
    {
        at = point;
        return *this;
    }
    ChildSettings& plainText()
    {
        textFormat = Qt::PlainText;
        return *this;
    }
    ChildSettings& aligned(Qt::Alignment to)
    {
        alignment = to;
        return *this;
    }
    ChildSettings& wrapped()
    {
        wordWrap = true;
        return *this;
    }
    ChildSettings& inBold()
    {
        bold = true;
        return *this;
    }
    ChildSettings& tipped(const QString& tip)
    {
        toolTip = tip;
        return *this;
    }
    ChildSettings& named(const QString& name, const QString& description = QString())
    {
        accessibleName = name;
        accessibleDescription = description;
        return *this;
    }
};

// What a caption label is to its control.
enum class Caption {
    Line,  // one line beside or over a child
    Heading,  // the bold title over a group
    Paragraph,  // an explanation, wrapped
};

// A caption's settings: plain text, aligned as given (from the top left unless told otherwise);
// a heading bold, a paragraph wrapped.
inline ChildSettings captionSettings(Caption kind,
                                     Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop)
{
    ChildSettings settings = ChildSettings().plainText().aligned(alignment);
    if (kind == Caption::Heading)
        settings.inBold();
    if (kind == Caption::Paragraph)
        settings.wrapped();
    return settings;
}

// makeChild, then the settings.
template <class W, class... Args>
W* makeChild(QWidget* parent, const char* name, const QRect& place, ChildSettings settings,
             Args&&... args)
{
    W* child = makeChild<W>(parent, name, place, std::forward<Args>(args)...);
    if (settings.at)
        child->move(*settings.at);
    if constexpr (std::is_base_of_v<QLabel, W>) {
        if (settings.textFormat)
            child->setTextFormat(*settings.textFormat);
        if (settings.wordWrap)
            child->setWordWrap(*settings.wordWrap);
        if (settings.alignment)
            child->setAlignment(*settings.alignment);
    }
    if (settings.bold) {
        QFont bold = child->font();
        bold.setBold(true);
        child->setFont(bold);
    }
    if (!settings.toolTip.isEmpty())
        child->setToolTip(settings.toolTip);
    if (!settings.accessibleName.isEmpty())
        child->setAccessibleName(settings.accessibleName);
    if (!settings.accessibleDescription.isEmpty())
        child->setAccessibleDescription(settings.accessibleDescription);
    return child;
}

}  // namespace ZebSubCtl
