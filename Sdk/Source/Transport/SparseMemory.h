#ifndef SPARSEMEMORY_H
#define SPARSEMEMORY_H

#include "Transport/RegisterAccess.h"

#include <array>
#include <map>

namespace OPX::KltAPI
{

/// Memory that acts as a camera: what is written to an address is read from it. It has the whole address space of 64
/// bits; only pages that were written exist. Memory that was never written holds 0xFF, so that a bit that says
/// "implemented" is set.
///
/// Aravis' own fake device has 64 KiB of registers; descriptions of real cameras reach far beyond.
class SparseMemory : public RegisterAccess
{
public:
    Failure ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer) override;
    Failure WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer) override;

    /// Whether memory that was never written was read since the last call.
    bool TakeUnknown();

private:
    static constexpr std::uint32_t PageSize = 4096;

    struct Page
    {
        Page() { bytes.fill(0xFF); }

        std::array<std::uint8_t, PageSize> bytes;
        std::array<bool, PageSize> written = {};
    };

    template <class Use>
    static void ForEachPage(std::uint64_t address, std::uint32_t size, Use use);

    std::map<std::uint64_t, Page> m_pages;
    bool m_readUnwritten = false;
};

} // namespace OPX::KltAPI

#endif
