#ifndef WORDMEMORY_H
#define WORDMEMORY_H

#include "Transport/RegisterDevice.h"

#include <map>
#include <utility>

/// A camera that takes whole words only, has no registers, and tells what was done with its memory.
class WordMemory : public OPX::KltAPI::RegisterAccess
{
public:
    struct Log
    {
        std::uint8_t step = 0; ///< From a byte to the next one, in memory that was never written.
        std::map<std::uint64_t, int> reads;
        int changes = 0; ///< Bytes.
        bool ended = false;
    };

    explicit WordMemory(Log& log) : m_log(log) {}
    ~WordMemory() override { m_log.ended = true; }

    OPX::KltAPI::Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override
    {
        ++m_log.reads[address];
        for (std::uint32_t i = 0; i < size; ++i)
            buffer[i] = ByteAt(address + i);
        return address % 4 + size % 4 == 0 ? KltErrorSuccess : KltErrorBadParameter;
    }

    OPX::KltAPI::Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override
    {
        for (std::uint32_t i = 0; i < size; ++i)
            m_log.changes += std::exchange(ByteAt(address + i), buffer[i]) != buffer[i] ? 1 : 0;
        return address % 4 + size % 4 == 0 ? KltErrorSuccess : KltErrorBadParameter;
    }

    OPX::KltAPI::Failure ReadRegister(std::uint64_t, std::uint32_t&) override { return KltErrorIncomplete; }
    OPX::KltAPI::Failure WriteRegister(std::uint64_t, std::uint32_t) override { return KltErrorIncomplete; }

private:
    std::uint8_t& ByteAt(std::uint64_t address)
    {
        return m_bytes.emplace(address, static_cast<std::uint8_t>(0xFF + address * m_log.step)).first->second;
    }

    Log& m_log;
    std::map<std::uint64_t, std::uint8_t> m_bytes;
};

#endif
