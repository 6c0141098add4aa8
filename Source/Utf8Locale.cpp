#include "Utf8Locale.h"

#include "QtCompat.h"

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>

namespace
{

const char Utf8[] = "C.UTF-8";

/// Has LC_ALL, which would overrule it, give way to one variable for each category.
void ExpandLcAll()
{
    const char* const all = std::getenv("LC_ALL");
    if (all == nullptr || *all == '\0')
        return;
    for (const char* category : {"LC_NUMERIC", "LC_TIME", "LC_COLLATE", "LC_MONETARY", "LC_MESSAGES", "LC_PAPER",
             "LC_NAME", "LC_ADDRESS", "LC_TELEPHONE", "LC_MEASUREMENT", "LC_IDENTIFICATION"})
        setenv(category, all, 1);
    unsetenv("LC_ALL");
}

} // namespace

void UseUtf8Locale()
{
    if (!WantsUtf8Locale())
        return;
    // ASCII is what is left of a locale that is not installed.
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0 || std::setlocale(LC_CTYPE, Utf8) == nullptr)
        return;
    // Qt sets the locale itself, from the environment.
    ExpandLcAll();
    setenv("LC_CTYPE", Utf8, 1);
}
