#ifndef KOLTAVERSION_H
#define KOLTAVERSION_H

/// The version of the tool and of its front end. The build reads it from here, too.
#define KOLTA_VERSION "1.0.6"

#endif
