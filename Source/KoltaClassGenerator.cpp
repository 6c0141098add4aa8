#include "KoltaClassGenerator.h"

#include "CameraObserver.h"
#include "ClassGeneratorBase.h"
#include "CppClassGenerator.h"
#include "KoltaHelper.h"
#include "KoltaVersion.h"
#include "QtCompat.h"
#include "SdkReads.h"
#include "TextEditIoDevice.h"
#include "Window/BusyGuard.h"
#include "Window/PlainText.h"
#include "Window/TextEditBlock.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLayout>
#include <QMenu>
#include <QMessageBox>
#include <QSettings>
#include <QShortcut>
#include <QStyle>
#include <QUrl>
#include <QVariant>
#include <QtDebug>

#include <stdexcept>

using namespace OPX::KltAPI;

namespace
{

const char DestinationFolderKey[] = "DestinationFolder";
const char OverwriteFilesKey[] = "OverwriteFiles";
const char RunKey[] = "Ctrl+Return";

/// Behind what a key does, the key.
QString WithKey(const char* key)
{
    return QLatin1String(" (") + QKeySequence(QLatin1String(key)).toString(QKeySequence::NativeText) + QLatin1Char(')');
}

} // namespace

KoltaClassGenerator::KoltaClassGenerator(QWidget* parent, Qt::WindowFlags flags)
    : QMainWindow(parent, flags),
      m_system(KoltaSystem::GetInstance())
{
    try
    {
        BuildWindow();
        SetIdentity();
        StartSdk();
        MakeConnections();
        ReadSettings();
        UpdateCameraList();
    }
    catch (...)
    {
        // The destructor does not run for a window that was never finished.
        m_system.Shutdown();
        qDeleteAll(m_generators);
        throw;
    }
}

KoltaClassGenerator::~KoltaClassGenerator()
{
    WriteSettings();
    m_system.Shutdown();
    // Before the widgets die: one that loses the focus then must not reach a generator whose messages go nowhere.
    qDeleteAll(m_generators);
}

void KoltaClassGenerator::BuildWindow()
{
    m_generators.append(new CppClassGenerator);
    m_ui.setupUi(this);
    AddOptionsTabs();
    MakeRoom();

    auto* device = new TextEditIoDevice(this, m_ui.m_messages);
    device->open(QIODevice::WriteOnly | QIODevice::Text);
    m_logStream.setDevice(device);
    UseUtf8(m_logStream);
}

void KoltaClassGenerator::AddOptionsTabs()
{
    m_ui.m_twOptions->clear();
    foreach (ClassGeneratorBase* generator, m_generators)
    {
        generator->SetupUi(m_ui.m_twOptions);
        generator->Widget()->setAutoFillBackground(true);
        m_ui.m_twOptions->addTab(generator->Widget(), QString::fromLatin1(generator->LanguageName()));
    }
    m_ui.m_twOptions->setCurrentIndex(0);

    // The pages came last; Run and the messages come after them.
    setTabOrder(previousInFocusChain(), m_ui.m_btnRun);
    setTabOrder(m_ui.m_btnRun, m_ui.m_messages);
    m_ui.m_listBoxCameras->setFocus();
}

/// Where the style needs more height than the form has, the window opens as high as it wants to be, but not higher than
/// the screen.
void KoltaClassGenerator::MakeRoom()
{
    const int screen = ScreenSize().height() - style()->pixelMetric(QStyle::PM_TitleBarHeight);
    if (NeededHeight() > screen)
        SaveHeight();
    resize(width(), qMin(NeededHeight() > height() ? sizeHint().height() : height(), screen));
}

/// What is enough for everything but many messages.
int KoltaClassGenerator::NeededHeight() const
{
    return sizeHint().height() - m_ui.m_messages->sizeHint().height() + m_ui.m_messages->minimumSizeHint().height();
}

/// So that nothing lies below the edge of a low screen.
void KoltaClassGenerator::SaveHeight()
{
    m_ui.statusBar->hide();
    foreach (const ClassGeneratorBase* generator, m_generators)
    {
        QLayout* page = generator->Widget()->layout();
        const QMargins margins = page->contentsMargins();
        page->setContentsMargins(margins.left(), 1, margins.right(), 1);
        // Forms and grids have this property.
        page->setProperty("verticalSpacing", 1);
        foreach (QLayout* part, page->findChildren<QLayout*>())
            part->setProperty("verticalSpacing", 1);
        page->activate();
    }
    // What is not visible yet does not hear of it by itself.
    m_ui.m_twOptions->updateGeometry();
    m_ui.gridLayout_2->activate();
}

void KoltaClassGenerator::SetIdentity()
{
    QCoreApplication::setOrganizationName(QLatin1String("OPX"));
    QCoreApplication::setOrganizationDomain(QLatin1String("opx.example"));
    QCoreApplication::setApplicationName(QLatin1String("KoltaClassGenerator"));
    QCoreApplication::setApplicationVersion(QLatin1String(KOLTA_VERSION));
    QCoreApplication* application = QCoreApplication::instance();
    application->setProperty(
        "Description", tr("KoltaClassGenerator is a tool to create camera helper classes for any of the Kolta APIs."));
    application->setProperty("Copyright", tr("Copyright (C) 2026 OPX"));
}

void KoltaClassGenerator::StartSdk()
{
    KltErrorType result = m_system.Startup();
    if (result == KltErrorSuccess)
    {
        m_cameraObserver = new CameraObserver;
        result = m_system.RegisterCameraListObserver(shared_ptr<ICameraListObserver>(m_cameraObserver));
    }
    if (result == KltErrorSuccess)
        return;
    // Without the observer the tool is of no use either, and users know this message.
    const QString message = tr("Cannot start Kolta!\nReason: ") + KoltaHelper::ReturnCodeToString(result);
    throw std::runtime_error(message.toLatin1().constData());
}

void KoltaClassGenerator::MakeConnections()
{
    connect(m_ui.m_actionExit, SIGNAL(triggered()), this, SLOT(OnActionExit()));
    connect(m_ui.m_actionAbout, SIGNAL(triggered()), this, SLOT(OnActionAbout()));
    connect(m_ui.m_actionAbout_Qt, SIGNAL(triggered()), this, SLOT(OnActionAboutQt()));
    connect(m_ui.m_btnRefresh, SIGNAL(clicked()), this, SLOT(OnCamerasRefreshClicked()));
    connect(m_ui.m_listBoxCameras, SIGNAL(itemSelectionChanged()), this, SLOT(OnCameraSelected()));
    connect(m_ui.m_btnBrowse, SIGNAL(clicked()), this, SLOT(OnDestinationFolderBrowseClicked()));
    connect(m_ui.m_editDestinationFolder, SIGNAL(textChanged(QString)), this,
        SLOT(OnDestinationFolderTextChanged(QString)));
    connect(m_ui.m_twOptions, SIGNAL(currentChanged(int)), this, SLOT(OnOptionsTabChanged(int)));
    connect(m_ui.m_btnRun, SIGNAL(clicked()), this, SLOT(OnRunClicked()));
    connect(m_ui.m_messages, SIGNAL(customContextMenuRequested(QPoint)), this, SLOT(OnMessagesMenuRequested(QPoint)));
    connect(new QShortcut(QKeySequence(QLatin1String(RunKey)), this), SIGNAL(activated()), this, SLOT(OnRunShortcut()));
    connect(new QShortcut(QKeySequence(Qt::Key_F5), this), SIGNAL(activated()), m_ui.m_btnRefresh, SLOT(click()));
    foreach (ClassGeneratorBase* generator, m_generators)
    {
        connect(generator, SIGNAL(LogMessage(QString)), this, SLOT(OnLogMessage(QString)));
        connect(generator, SIGNAL(OptionsChanged()), this, SLOT(OnLanguageOptionsChanged()));
    }
    connect(m_cameraObserver, SIGNAL(CameraListChangedSignal(UpdateTriggerType)), this,
        SLOT(OnCameraListChanged(UpdateTriggerType)));
}

void KoltaClassGenerator::ReadSettings()
{
    QSettings settings;
    m_ui.m_editDestinationFolder->setText(settings.value(QLatin1String(DestinationFolderKey)).toString());
    m_ui.m_cbOverwriteFiles->setChecked(settings.value(QLatin1String(OverwriteFilesKey), false).toBool());
    foreach (ClassGeneratorBase* generator, m_generators)
        generator->ReadSettings();
}

void KoltaClassGenerator::WriteSettings() const
{
    QSettings settings;
    settings.setValue(QLatin1String(DestinationFolderKey), m_ui.m_editDestinationFolder->text());
    settings.setValue(QLatin1String(OverwriteFilesKey), m_ui.m_cbOverwriteFiles->isChecked());
    foreach (const ClassGeneratorBase* generator, m_generators)
        generator->WriteSettings();
}

void KoltaClassGenerator::OnActionExit()
{
    close();
}

void KoltaClassGenerator::OnActionAbout()
{
    const QString site = tr("www.") + QCoreApplication::organizationDomain();
    const QVariant description = QCoreApplication::instance()->property("Description");
    const QVariant copyright = QCoreApplication::instance()->property("Copyright");
    QMessageBox::about(this, tr("About KoltaClassGenerator"),
        QLatin1String("<h2><b>KoltaClassGenerator</b></h2><br><br>") + description.toString() +
            QLatin1String("<br><br>") + tr("Version: ") + QCoreApplication::applicationVersion() +
            QLatin1String("<br><br>") + QCoreApplication::organizationName() + QLatin1String("<br>") +
            copyright.toString() + QLatin1String("<br>") + tr("<a href=") + QLatin1Char('"') + site +
            QLatin1String("\">") + site + QLatin1String("</a>"));
}

void KoltaClassGenerator::OnActionAboutQt()
{
    QMessageBox::aboutQt(this, tr("About Qt"));
}

void KoltaClassGenerator::OnCamerasRefreshClicked()
{
    UpdateCameraList();
}

void KoltaClassGenerator::OnCameraListChanged(UpdateTriggerType reason)
{
    if (CameraObserver::ConcernsList(reason))
        UpdateCameraList();
}

void KoltaClassGenerator::OnCameraSelected()
{
    qDebug("void KoltaClassGenerator::OnCameraSelected()");
    const int row = m_ui.m_listBoxCameras->currentRow();
    const bool known = row >= 0 && static_cast<std::size_t>(row) < m_cameras.size();
    const CameraPtr camera = known ? m_cameras[static_cast<std::size_t>(row)] : CameraPtr();
    if (camera.get() == nullptr)
    {
        UpdateControls();
        return;
    }
    StartMessages();
    const BusyGuard busy;
    const KltErrorType opened = camera->Open(KltAccessModeFull);
    if (opened != KltErrorSuccess)
    {
        Log(tr("Unable to open camera! Reason: ") + KoltaHelper::ReturnCodeToString(opened));
        return;
    }
    const std::string name = TextOf(*camera, &Camera::GetName);
    const bool read = ReadFeatures(camera, name);
    camera->Close();
    if (!read)
        return;
    foreach (ClassGeneratorBase* generator, m_generators)
        generator->SetCameraName(name.c_str());
    UpdateControls();
}

void KoltaClassGenerator::OnDestinationFolderTextChanged(const QString& /*text*/)
{
    UpdateControls();
}

void KoltaClassGenerator::OnDestinationFolderBrowseClicked()
{
    const QString folder = QFileDialog::getExistingDirectory(
        this, QLatin1String("Select Destination Folder"), m_ui.m_editDestinationFolder->text());
    if (folder.isEmpty())
        return;
    m_ui.m_editDestinationFolder->setText(folder);
    UpdateControls();
}

void KoltaClassGenerator::OnOptionsTabChanged(int /*tabIndex*/)
{
    UpdateControls();
}

void KoltaClassGenerator::OnLogMessage(const QString& message)
{
    Log(message);
}

void KoltaClassGenerator::OnLanguageOptionsChanged()
{
    qDebug("void KoltaClassGenerator::OnLanguageOptionsChanged()");
    UpdateControls();
}

void KoltaClassGenerator::OnRunClicked()
{
    ClassGeneratorBase* generator = CurrentGenerator();
    if (generator == nullptr)
        return;
    const QByteArray destinationFolder = m_ui.m_editDestinationFolder->text().toLocal8Bit();
    StartMessages();
    const BusyGuard busy;
    const TextEditBlock messages(*m_ui.m_messages);
    generator->Run(destinationFolder.constData(), m_ui.m_cbOverwriteFiles->isChecked(), m_featureInfos);
}

void KoltaClassGenerator::OnMessagesMenuRequested(const QPoint& position)
{
    QMenu* menu = m_ui.m_messages->createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addSeparator();
    menu->addAction(tr("Clear"), m_ui.m_messages, SLOT(clear()));
    menu->addAction(tr("Open Destination Folder"), this, SLOT(OnOpenDestinationFolder()))
        ->setEnabled(QFileInfo(m_ui.m_editDestinationFolder->text()).isDir());
    menu->popup(m_ui.m_messages->viewport()->mapToGlobal(position));
}

void KoltaClassGenerator::OnOpenDestinationFolder()
{
    // Relative to our own folder, as a run takes it; the desktop's program has another one.
    const QFileInfo folder(m_ui.m_editDestinationFolder->text());
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder.absoluteFilePath()));
}

void KoltaClassGenerator::OnRunShortcut()
{
    // As for a click, what is being typed is finished first.
    QWidget* typed = focusWidget();
    m_ui.m_btnRun->setFocus();
    m_ui.m_btnRun->click();
    if (typed != nullptr)
        typed->setFocus();
}

void KoltaClassGenerator::UpdateCameraList()
{
    m_ui.m_listBoxCameras->clear();
    const KltErrorType result = ReadList(m_system, &KoltaSystem::GetCameras, m_cameras);
    if (result != KltErrorSuccess)
    {
        Log(tr("Unable to get camera list! Reason: ") + KoltaHelper::ReturnCodeToString(result));
        return;
    }
    Log(QString::number(m_cameras.size()) + tr(" cameras found."));
    for (const CameraPtr& camera : m_cameras)
        if (camera.get() != nullptr)
            AddCameraRow(*camera);
    UpdateControls();
}

void KoltaClassGenerator::AddCameraRow(const Camera& camera)
{
    std::string name = "[NoName]";
    ReadString(camera, &Camera::GetName, name);
    std::string serialNumber;
    // A camera without a serial number cannot be told from others: it is counted, but gets no row.
    if (!ReadString(camera, &Camera::GetSerialNumber, serialNumber))
        return;
    const QString row = QString::fromUtf8((name + " (" + serialNumber + ")").c_str());
    m_ui.m_listBoxCameras->addItem(row);
    // Two cameras of one model differ at the end of the row, which may be out of sight.
    m_ui.m_listBoxCameras->item(m_ui.m_listBoxCameras->count() - 1)->setToolTip(AsPlainText(row));
}

bool KoltaClassGenerator::ReadFeatures(const CameraPtr& camera, const std::string& name)
{
    Log(tr("Reading features of camera '") + QString::fromUtf8(name.c_str()) + QLatin1String("' ..."));
    // A camera may be slow, and nothing is painted until it has been read.
    m_ui.m_messages->viewport()->repaint();
    const int result = m_featureInfos.Create(camera);
    if (result != KltErrorSuccess)
    {
        Log(tr("Unable to read camera features! Reason: ") + KoltaHelper::ReturnCodeToString(result));
        return false;
    }
    Log(tr("... done, ") + QString::number(m_featureInfos.FeatureCount()) + QLatin1String(" features in ") +
        QString::number(m_featureInfos.Categories().size()) + QLatin1String(" categories and ") +
        QString::number(m_featureInfos.Enums().size()) + QLatin1String(" enums found."));
    return true;
}

void KoltaClassGenerator::UpdateControls()
{
    const QString missing = MissingForRun();
    m_ui.m_btnRun->setEnabled(missing.isEmpty());
    m_ui.m_btnRun->setToolTip(missing.isEmpty() ? tr("Write the class") + WithKey(RunKey) : missing);
    m_ui.m_editDestinationFolder->setToolTip(MissingDestination());
}

/// The first condition that is not met, as a sentence for the user; empty if a run may start.
QString KoltaClassGenerator::MissingForRun() const
{
    QString missingDestination = MissingDestination();
    const ClassGeneratorBase* generator = CurrentGenerator();
    const bool optionsValid = generator != nullptr && generator->OptionsValid();
    if (m_ui.m_listBoxCameras->selectedItems().isEmpty())
        return tr("Select a camera.");
    if (!missingDestination.isEmpty())
        return missingDestination;
    if (m_featureInfos.Categories().empty())
        return tr("The camera has no features.");
    if (!optionsValid)
        return generator != nullptr ? generator->MissingOption() : tr("Choose a programming language.");
    return QString();
}

QString KoltaClassGenerator::MissingDestination() const
{
    const QString folder = m_ui.m_editDestinationFolder->text();
    if (folder.isEmpty())
        return tr("Choose a destination folder.");
    return QFile::exists(folder) ? QString() : tr("The destination folder does not exist.");
}

ClassGeneratorBase* KoltaClassGenerator::CurrentGenerator() const
{
    return m_generators.value(m_ui.m_twOptions->currentIndex(), nullptr);
}

/// What follows was started by the user, who wants to see it.
void KoltaClassGenerator::StartMessages()
{
    static_cast<TextEditIoDevice*>(m_logStream.device())->StartGroup();
}

void KoltaClassGenerator::Log(const QString& message)
{
    m_logStream << message;
    m_logStream.flush();
}
