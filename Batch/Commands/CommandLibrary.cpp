#include "Commands/Commands.h"

/// What the library offers.
extern "C" __attribute__((visibility("default"))) const Commands KoltaCommands = {
    ListCameras, ListFeatures, CompareCameras, DumpDescription, Generate, CheckGenerated, Validate};
