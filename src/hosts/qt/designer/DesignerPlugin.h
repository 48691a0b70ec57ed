// The widget in Qt Designer's box of widgets.
#pragma once

#include <QtCore/QObject>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>

namespace qv::qt {

/// Found by Designer, and by a QUiLoader, in the folder `designer` of Qt's plugins. Designer shows a sample
/// on the page; a loaded form has an empty page, or what its properties make of it.
class DesignerPlugin final : public QObject, public QDesignerCustomWidgetInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QDesignerCustomWidgetInterface_iid)
    Q_INTERFACES(QDesignerCustomWidgetInterface)

public:
    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    bool isContainer() const override { return false; }
    /// nullptr where memory ends.
    QWidget* createWidget(QWidget* parent) override;
    bool isInitialized() const override { return designs_; }
    /// Called by Designer alone.
    void initialize(QDesignerFormEditorInterface*) override { designs_ = true; }
    QString domXml() const override;

private:
    bool designs_ = false;
};

} // namespace qv::qt
