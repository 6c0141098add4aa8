#ifndef STANDIN_H
#define STANDIN_H

#include <string>

/// Only these cameras are plugged in from now on: the manners of each, with a comma between two cameras. The first is
/// "USB1", the second "USB2" and so on; those that are there already change their manners. At first, KOLTA_USB says it.
///
///   plain                      no special manners
///   xml=PATH                   its description; one that begins with "PK" is said to be zipped
///   huge, entries=N            says that its description has 2^40 bytes, and its manifest so many entries
///   several                    its manifest has entries that are not meant around the one for its description
///   silent, foreign, short     answers nothing, or something else; the second half of every answer is missing
///   half                       writes half of what it is told
///   late                       before every answer comes one to the question before, and one of another kind
///   refuses=STATUS             every answer has this status
///   slow=MS, response=MS       every answer takes that long; says that none takes longer
///   pending=MS                 asks for so much patience before every answer, and takes half as long
///   patience                   asks for a second of it, again and again
///   transfer=N                 no command and no answer has more bytes, and it says so; 0 says nothing
///   stall=N, stalls            every Nth transfer stalls; all of them do
///   pulled=N, later=MS         is gone after so many transfers; is plugged in that much later
///   busy, denied, webcam       another program uses it; may not be opened; is another device
///   mute                       does not say who it is
///   scanned                    the system does not tell that it comes and goes
void PlayUsb(const std::string& cameras);

#endif
