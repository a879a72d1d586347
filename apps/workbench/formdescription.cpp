#include "formdescription.h"

#include "contracts/failure.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
constexpr qint32 kInvalid = 380;

[[noreturn]] void invalid(const QString& where, const QString& what)
{
    throw ZebObjects::Failure(kInvalid, QStringLiteral("zeb-workbench"),
                              QStringLiteral("Invalid form description: %1 %2").arg(where, what));
}

QString text(const QJsonObject& o, const QString& key, const QString& where, bool required)
{
    const QJsonValue v = o.value(key);
    if (v.isUndefined() && !required)
        return {};
    if (!v.isString())
        invalid(where, QStringLiteral("needs \"%1\" as a text").arg(key));
    return v.toString();
}

int number(const QJsonObject& o, const QString& key, const QString& where)
{
    const QJsonValue v = o.value(key);
    if (!v.isDouble() || v.toDouble() != double(v.toInt()))
        invalid(where, QStringLiteral("needs \"%1\" as a whole number").arg(key));
    return v.toInt();
}
}  // namespace

FormDescription FormDescription::fromJson(const QByteArray& json)
{
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        invalid(QStringLiteral("the document"),
                QStringLiteral("is not valid JSON (%1 at offset %2)")
                    .arg(error.errorString())
                    .arg(error.offset));
    if (!doc.isObject())
        invalid(QStringLiteral("the document"), QStringLiteral("is not a JSON object"));
    const QJsonObject root = doc.object();
    FormDescription form;
    form.title = text(root, QStringLiteral("title"), QStringLiteral("the form"), true);
    form.width = number(root, QStringLiteral("width"), QStringLiteral("the form"));
    form.height = number(root, QStringLiteral("height"), QStringLiteral("the form"));
    const QJsonArray pages = root.value(QStringLiteral("pages")).toArray();
    if (pages.isEmpty())
        invalid(QStringLiteral("the form"), QStringLiteral("needs a non-empty \"pages\" array"));
    for (qsizetype p = 0; p < pages.size(); ++p) {
        const QString pageWhere = QStringLiteral("page %1").arg(p + 1);
        if (!pages.at(p).isObject())
            invalid(pageWhere, QStringLiteral("is not an object"));
        const QJsonObject po = pages.at(p).toObject();
        FormPage page;
        page.title = text(po, QStringLiteral("title"), pageWhere, true);
        const QJsonArray controls = po.value(QStringLiteral("controls")).toArray();
        for (qsizetype c = 0; c < controls.size(); ++c) {
            const QString where = QStringLiteral("control %1 of %2").arg(c + 1).arg(pageWhere);
            if (!controls.at(c).isObject())
                invalid(where, QStringLiteral("is not an object"));
            const QJsonObject co = controls.at(c).toObject();
            FormControl control;
            control.identifier = text(co, QStringLiteral("identifier"), where, true);
            control.name = text(co, QStringLiteral("name"), where, true);
            control.left = number(co, QStringLiteral("left"), where);
            control.top = number(co, QStringLiteral("top"), where);
            control.width = number(co, QStringLiteral("width"), where);
            control.height = number(co, QStringLiteral("height"), where);
            const QJsonValue props = co.value(QStringLiteral("properties"));
            if (!props.isUndefined()) {
                if (!props.isObject())
                    invalid(where, QStringLiteral("needs \"properties\" as an object"));
                control.properties = ZebSubCtl::PropertyBag::fromJsonObject(props.toObject());
            }
            const QJsonValue bind = co.value(QStringLiteral("bind"));
            if (!bind.isUndefined()) {
                if (!bind.isObject())
                    invalid(where, QStringLiteral("needs \"bind\" as an object"));
                const QJsonObject bo = bind.toObject();
                for (auto it = bo.begin(); it != bo.end(); ++it) {
                    if (!it.value().isString())
                        invalid(where, QStringLiteral("binds \"%1\" to something that is not a "
                                                      "name")
                                           .arg(it.key()));
                    control.bindings.insert(it.key(), it.value().toString());
                }
            }
            const QJsonValue runtime = co.value(QStringLiteral("runtime"));
            if (!runtime.isUndefined()) {
                if (!runtime.isObject())
                    invalid(where, QStringLiteral("needs \"runtime\" as an object"));
                const QJsonObject ro = runtime.toObject();
                for (auto it = ro.begin(); it != ro.end(); ++it) {
                    if (!it.value().isBool() && !it.value().isDouble() && !it.value().isString())
                        invalid(where, QStringLiteral("sets \"%1\" at run time to something that "
                                                      "is not a flag, number or text")
                                           .arg(it.key()));
                    control.runtimeProperties.append({it.key(), it.value().toVariant()});
                }
            }
            const QJsonValue names = co.value(QStringLiteral("names"));
            if (!names.isUndefined()) {
                if (!names.isObject())
                    invalid(where, QStringLiteral("needs \"names\" as an object"));
                const QJsonObject no = names.toObject();
                for (auto it = no.begin(); it != no.end(); ++it) {
                    if (!it.value().isString() || it.value().toString().trimmed().isEmpty())
                        invalid(where, QStringLiteral("names \"%1\" with something that is not "
                                                      "a text")
                                           .arg(it.key()));
                    control.accessibleNames.insert(it.key(), it.value().toString());
                }
            }
            page.controls.append(control);
        }
        form.pages.append(page);
    }
    return form;
}

FormDescription FormDescription::fromFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ZebObjects::Failure(53, QStringLiteral("zeb-workbench"),
                                  QStringLiteral("File not found: cannot read the form \"%1\": %2")
                                      .arg(path, file.errorString()));
    return fromJson(file.readAll());
}
