#pragma once

#include "frame/propertybag.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include <utility>

// A host form: pages of controls, each with its identifier, place (twips), saved design and the
// business objects it is bound to.
struct FormControl {
    QString identifier;  // "ZebSubmittalControls.ctlTextSelect"
    QString name;  // the control's name on the form
    int left = 0, top = 0, width = 0, height = 0;  // twips
    ZebSubCtl::PropertyBag properties;  // the saved design
    QMap<QString, QString> bindings;  // object property -> sample object name
    // Properties that are not saved with the design, set by name after binding (the way a host
    // sets them in code each time it loads the form).
    QList<std::pair<QString, QVariant>> runtimeProperties;
    // Names a screen reader reads for the control ("" key) and its children (by object name),
    // where the page gives them a meaning of their own.
    QMap<QString, QString> accessibleNames;
};

struct FormPage {
    QString title;
    QList<FormControl> controls;
};

struct FormDescription {
    QString title;
    int width = 0, height = 0;  // pixels
    QList<FormPage> pages;

    // Fails (Failure 380) with a message that names the place of the problem.
    static FormDescription fromJson(const QByteArray& json);
    static FormDescription fromFile(const QString& path);
};
