#ifndef PRINTJSON_H
#define PRINTJSON_H

#include <QByteArray>
#include <QJsonDocument>

#include <cstdio>

/// Prints an array or an object to the standard output.
template <class Json>
void PrintJson(const Json& json)
{
    std::fputs(QJsonDocument(json).toJson().constData(), stdout);
}

#endif
