#ifndef STANDIN_H
#define STANDIN_H

#include <string>

/// Plays these cameras from now on: their manners are words, and a comma is between two cameras. Their serial numbers
/// are "USB1", "USB2" and so on; one that is there already only gets other manners. At first, it is what KOLTA_USB
/// says.
///
///   plain           no special manners
///   xml=PATH        its description; one that begins with "PK" is said to be zipped
///   huge            says that its description has 2^40 bytes
///   entries=N       says that its manifest has so many entries
///   several         its manifest has entries that nobody can use, before and after the one for its description
///   busy            another program uses it
///   denied          may not be opened
///   webcam          is another device
///   scanned         the system does not tell that it comes and goes
///   later=MS        is plugged in that much later
///   pulled=N        is gone after so many transfers
///   silent          answers nothing
///   slow=MS         every answer takes that long
///   response=MS     says that no answer takes longer
///   pending=MS      asks for that much patience before every answer, and takes half as long
///   patience        asks for a second of patience, again and again
///   late            before every answer comes one to the question before, and one of another kind
///   foreign         every answer is for another question
///   short           the second half of every answer is missing
///   refuses=STATUS  every answer has this status
///   stall=N         every Nth transfer stalls
///   stalls          everything does
///   transfer=N      no command and no answer has more bytes, and it says so
///   ADDRESS=VALUE   a register (of four bytes, the highest first)
void PlayUsb(const std::string& cameras);

#endif
