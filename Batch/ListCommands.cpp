#include "ListCommands.h"

#include "CameraSource.h"

#include <cstdio>

void ListCameras()
{
    const SdkSession session;
    for (const OPX::KltAPI::CameraPtr& camera : session.Cameras())
        std::printf("%s\t%s\n", SerialNumberOf(*camera).c_str(), NameOf(*camera).c_str());
}
