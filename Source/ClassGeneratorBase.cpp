#include "ClassGeneratorBase.h"

QString ClassGeneratorBase::CameraName() const
{
    return m_cameraName;
}

void ClassGeneratorBase::SetCameraName(const char* name)
{
    m_cameraName = QString::fromLatin1(name);
}

QString ClassGeneratorBase::MissingOption() const
{
    return tr("The options are not complete.");
}
