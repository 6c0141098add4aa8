#include "Document/Unzip.h"

#include "Document/DocumentLimits.h"
#include "Document/Texts.h"

#include <archive.h>
#include <archive_entry.h>

#include <clocale>
#include <memory>

namespace OPX::KltAPI
{
namespace
{

// Not with Aravis' zip reader: it trusts the offsets in an archive and reads far outside it.
typedef std::unique_ptr<archive, decltype(&archive_read_free)> ArchivePtr;

/// As long as it lives, names beyond ASCII can be read on this thread: libarchive converts them to the encoding of the
/// locale first, and that of a program that never sets one cannot hold them.
class Utf8Locale
{
public:
    Utf8Locale() : m_locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
    {
        if (m_locale != nullptr)
            m_before = uselocale(m_locale);
    }

    ~Utf8Locale()
    {
        if (m_locale == nullptr)
            return;
        uselocale(m_before);
        freelocale(m_locale);
    }

    Utf8Locale(const Utf8Locale&) = delete;
    Utf8Locale& operator=(const Utf8Locale&) = delete;

private:
    locale_t m_locale;
    locale_t m_before = nullptr;
};

bool IsXml(archive_entry* entry)
{
    const char* path = archive_entry_pathname_utf8(entry);
    path = path != nullptr ? path : archive_entry_pathname(entry);
    // A name is lost if it is not in UTF-8 where the archive says so.
    return path == nullptr || HasExtension(path, ".xml");
}

/// The file that the archive is at. Its stated size is not trusted either.
std::string ReadFile(archive* zip, std::string& problem)
{
    std::string content;
    char block[1 << 14];
    la_ssize_t size = 0;
    while (content.size() <= MaximumDocumentSize && (size = archive_read_data(zip, block, sizeof block)) > 0)
        content.append(block, static_cast<std::size_t>(size));
    problem.clear();
    if (size < 0)
        problem = "the archive is damaged";
    else if (content.size() > MaximumDocumentSize)
        problem = "the description in the archive is too large";
    return content;
}

} // namespace

bool IsZip(const std::string& content)
{
    return content.compare(0, 2, "PK") == 0;
}

std::string UnzipDescription(const std::string& content, std::string& problem)
{
    problem = "the archive holds no description";
    const Utf8Locale utf8;
    const ArchivePtr zip(archive_read_new(), &archive_read_free);
    archive_read_support_format_zip(zip.get());
    if (archive_read_open_memory(zip.get(), content.data(), content.size()) != ARCHIVE_OK)
        return std::string();
    for (archive_entry* entry = nullptr; archive_read_next_header(zip.get(), &entry) >= ARCHIVE_WARN;)
        if (IsXml(entry))
            return ReadFile(zip.get(), problem);
    return std::string();
}

} // namespace OPX::KltAPI
