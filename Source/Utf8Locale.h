#ifndef UTF8LOCALE_H
#define UTF8LOCALE_H

/// Has the characters of the locale be UTF-8 if Qt wants that, and leaves everything else of the locale alone. To be
/// called before the application object is made, which would do the same, and say so on the terminal.
void UseUtf8Locale();

#endif
