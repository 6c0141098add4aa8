#ifndef LISTCOMMANDS_H
#define LISTCOMMANDS_H

/// Prints name and serial number of every camera, one a line. Throws CommandError.
void ListCameras();

#endif
