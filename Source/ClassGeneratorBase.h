#ifndef CLASSGENERATORBASE_H
#define CLASSGENERATORBASE_H

#include <QObject>
#include <QString>

class FeatureInfos;
class QWidget;

/// A generator of camera classes in one language, with a page for its options.
///
/// Talks back through its signals only. GUI thread only.
class ClassGeneratorBase : public QObject
{
    Q_OBJECT

public:
    /// The name of the language, for people. Static text.
    virtual const char* LanguageName() const = 0;

    /// Builds the options page into \a parent, which owns it. Once, before anything below is called.
    virtual void SetupUi(QWidget* parent) = 0;

    /// The widget with the options, made by SetupUi and not owned by the generator.
    virtual QWidget* Widget() const = 0;

    /// Fills the page with the user's stored options. Without options to store there is nothing to do.
    virtual void ReadSettings() {}

    /// Stores what the page shows.
    virtual void WriteSettings() const {}

    /// Whether the options allow a run.
    virtual bool OptionsValid() const = 0;

    /// The name last given to the base's SetCameraName. A generator that turns the name into options right away
    /// leaves this empty.
    virtual QString CameraName() const { return m_cameraName; }

    /// Tells which camera was read. \a name is Latin-1 for the base; generators may read it as they see fit.
    virtual void SetCameraName(const char* name) { m_cameraName = QString::fromLatin1(name); }

    /// Generates the class. Success and failure are reported as messages.
    /// \param destinationFolder the folder for the files; lives until the call returns
    /// \param overwrite whether existing files may be replaced
    virtual void Run(const char* destinationFolder, bool overwrite, const FeatureInfos& features) = 0;

    /// The first thing for which OptionsValid says no, as a sentence for the user. Asked only then.
    virtual QString MissingOption() const { return tr("The options are not complete."); }

signals:
    /// One message for the user.
    void LogMessage(QString message);

    /// An option was edited: OptionsValid may have changed.
    void OptionsChanged();

private:
    QString m_cameraName;
};

#endif
