#ifndef JAVACLASSGENERATOR_H
#define JAVACLASSGENERATOR_H

#include "ClassGeneratorBase.h"

class QFormLayout;
class QLabel;
class QLineEdit;
class QVBoxLayout;

/// The options of a generator of Java classes. Abstract: a generator that derives from it only has to implement Run.
class JavaClassGenerator : public ClassGeneratorBase
{
    Q_OBJECT

public:
    const char* LanguageName() const override { return "Java"; }
    void SetupUi(QWidget* parent) override;
    QWidget* Widget() const override { return widget; }
    bool OptionsValid() const override;

    /// Names the class after the camera, as it is. \a name is Latin-1.
    void SetCameraName(const char* name) override;

private slots:
    void OnOptionsTextChanged(const QString& text);
    void OnClassNameEditingFinished();

private:
    void AddRow(int row, QLabel*& label, QLineEdit*& edit, const char* name, bool enabled);

    QVBoxLayout* verticalLayout = nullptr;
    QWidget* widget = nullptr;
    QFormLayout* formLayout = nullptr;
    QLabel* m_lblClassName = nullptr;
    QLineEdit* m_editClassName = nullptr;
    QLabel* m_lblClassFileName = nullptr;
    QLineEdit* m_editClassFileName = nullptr;
};

#endif
