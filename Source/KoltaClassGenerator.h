#ifndef KOLTACLASSGENERATOR_H
#define KOLTACLASSGENERATOR_H

#include "FeatureInfos.h"
#include "ui_KoltaClassGenerator.h"

#include <KoltaCPP/Camera.h>
#include <KoltaCPP/KoltaSystem.h>
#include <QList>
#include <QMainWindow>
#include <QTextStream>

#include <string>
#include <vector>

class CameraObserver;
class ClassGeneratorBase;

/// The application's only window: lists the cameras, reads the selected one and runs the generators.
///
/// Runs the SDK for as long as it lives. GUI thread only.
class KoltaClassGenerator : public QMainWindow
{
    Q_OBJECT

public:
    /// Throws std::runtime_error, with a text for the user in Latin-1, if the SDK cannot be started.
    explicit KoltaClassGenerator(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    /// Stores the settings and shuts the SDK down.
    ~KoltaClassGenerator() override;

private slots:
    void OnActionExit();
    void OnActionAbout();
    void OnActionAboutQt();
    void OnCamerasRefreshClicked();
    void OnCameraListChanged(UpdateTriggerType reason);
    void OnCameraSelected();
    void OnDestinationFolderTextChanged(const QString& text);
    void OnDestinationFolderBrowseClicked();
    void OnOptionsTabChanged(int tabIndex);
    void OnLogMessage(const QString& message);
    void OnLanguageOptionsChanged();
    void OnRunClicked();
    void OnMessagesMenuRequested(const QPoint& position);
    void OnOpenDestinationFolder();
    void OnRunShortcut();

private:
    void BuildWindow();
    void AddOptionsTabs();
    void MakeRoom();
    int NeededHeight() const;
    void SaveHeight();
    static void SetIdentity();
    void StartSdk();
    void MakeConnections();
    void ReadSettings();
    void WriteSettings() const;

    void UpdateCameraList();
    void AddCameraRow(const OPX::KltAPI::Camera& camera);
    bool ReadFeatures(const OPX::KltAPI::CameraPtr& camera, const std::string& name);
    void UpdateControls();
    QString MissingForRun() const;
    QString MissingDestination() const;
    ClassGeneratorBase* CurrentGenerator() const;
    void StartMessages();
    void Log(const QString& message);

    // Declared in the order in which they are made. The handles of cameras and features are released after the SDK
    // was shut down, which it allows.
    Ui_KoltaClassGeneratorClass m_ui;
    QList<ClassGeneratorBase*> m_generators; ///< In the order of the tabs.
    QTextStream m_logStream;
    OPX::KltAPI::KoltaSystem& m_system;
    CameraObserver* m_cameraObserver = nullptr; ///< Owned by the SDK.
    std::vector<OPX::KltAPI::CameraPtr> m_cameras;
    FeatureInfos m_featureInfos;
};

#endif
