#ifndef JSON_H
#define JSON_H

#include <QByteArray>
#include <QJsonDocument>

#include <cstdio>
#include <string>

/// A text in JSON.
inline QJsonValue JsonText(const std::string& text)
{
    return QString::fromStdString(text);
}

/// Prints an array or an object to the standard output.
template <class Json>
void PrintJson(const Json& json)
{
    std::fputs(QJsonDocument(json).toJson().constData(), stdout);
}

#endif
