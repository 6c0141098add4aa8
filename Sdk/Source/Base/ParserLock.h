#ifndef PARSERLOCK_H
#define PARSERLOCK_H

#include <mutex>

namespace OPX::KltAPI
{

/// Held while Aravis parses a description: its parser keeps static state.
inline std::mutex& ParserLock()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace OPX::KltAPI

#endif
