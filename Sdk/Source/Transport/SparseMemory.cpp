#include "Transport/SparseMemory.h"

#include <algorithm>
#include <utility>

namespace OPX::KltAPI
{

/// Calls \a use for each page that a range touches: with its number, where in it the range goes on, how much of the
/// range lies before it, and how much in it.
template <class Use>
void SparseMemory::ForEachPage(std::uint64_t address, std::uint32_t size, Use use)
{
    for (std::uint32_t done = 0, length = 0; done < size; done += length)
    {
        const std::uint64_t place = address + done; // Behind the last address comes the first.
        const auto offset = static_cast<std::uint32_t>(place % PageSize);
        length = std::min(size - done, PageSize - offset);
        use(place / PageSize, offset, done, length);
    }
}

Failure SparseMemory::ReadMemory(std::uint64_t address, std::uint32_t size, std::uint8_t* buffer)
{
    ForEachPage(address, size,
        [&](std::uint64_t number, std::uint32_t offset, std::uint32_t done, std::uint32_t length)
        {
            static const Page Untouched;
            const auto found = m_pages.find(number);
            const Page& page = found == m_pages.end() ? Untouched : found->second;
            const bool* const written = page.written.data() + offset;
            m_readUnwritten = m_readUnwritten || std::find(written, written + length, false) != written + length;
            std::copy_n(page.bytes.begin() + offset, length, buffer + done);
        });
    return KltErrorSuccess;
}

Failure SparseMemory::WriteMemory(std::uint64_t address, std::uint32_t size, const std::uint8_t* buffer)
{
    ForEachPage(address, size,
        [&](std::uint64_t number, std::uint32_t offset, std::uint32_t done, std::uint32_t length)
        {
            Page& page = m_pages[number];
            std::copy_n(buffer + done, length, page.bytes.begin() + offset);
            std::fill_n(page.written.begin() + offset, length, true);
        });
    return KltErrorSuccess;
}

bool SparseMemory::TakeUnknown()
{
    return std::exchange(m_readUnwritten, false);
}

} // namespace OPX::KltAPI
