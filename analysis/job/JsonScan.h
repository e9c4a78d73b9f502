#pragma once

#include <QByteArray>
#include <QStringList>

/// What QJsonDocument takes without a word in a text that it can read, and a job must not leave open: keys that are
/// given twice, of which the last one would count, and numbers that are none in JSON (RFC 8259), such as "1.". One
/// sentence each, beginning with the key.
QStringList doubtfulJson(const QByteArray &text);

/// The name of a key, or of an entry of a list, in messages: "references", "references[0]", "references[0].file".
/// What cannot be printed is replaced, so that a message stays one line.
QString keyWithin(const QString &object, const QString &key);
QString entryOf(const QString &list, int index);
