#pragma once

#include <QObject>
#include <QString>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

struct QMetaObject;

namespace ZebSubCtl {

// One registered control as a Designer widget: described from its class (the "ToolTip",
// "WhatsThis" and "IncludeFile" class infos) and made through the control registry.
class ControlWidgetPlugin : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_INTERFACES(QDesignerCustomWidgetInterface)
public:
    ControlWidgetPlugin(const QString& identifier, QObject* parent = nullptr);

    // The registry identifier ("ZebSubmittalControls.ctlTextSelect").
    QString identifier() const { return m_identifier; }

    QString name() const override;
    QString group() const override;
    QIcon icon() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    bool isContainer() const override;
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface* core) override;
    QString domXml() const override;

private:
    QString classInfo(const char* key) const;
    QString bareName() const;

    QString m_identifier;
    const QMetaObject* m_metaObject;
    bool m_initialized = false;
};

}  // namespace ZebSubCtl
