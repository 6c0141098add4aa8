#ifndef KOLTACPP_KOLTACPP_H
#define KOLTACPP_KOLTACPP_H

/// \file
/// The whole interface of the SDK. What only this library has is in `Extensions.h`, which has to be included by name.

#include "KoltaCPP/Camera.h"
#include "KoltaCPP/EnumEntry.h"
#include "KoltaCPP/Feature.h"
#include "KoltaCPP/ICameraListObserver.h"
#include "KoltaCPP/KoltaExport.h"
#include "KoltaCPP/KoltaSystem.h"
#include "KoltaCPP/KoltaTypes.h"
#include "KoltaCPP/Mutex.h"
#include "KoltaCPP/SharedPtr.h"

#endif
