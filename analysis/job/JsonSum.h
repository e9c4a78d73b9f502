#pragma once

#include <QJsonObject>
#include <QString>

/// Reports and the jobs that these programs write carry a sum of themselves, by which a later change is found.

/// An object as it reads when it has been written, with its SHA-256 under "sum".
QJsonObject withSum(const QJsonObject &object);

/// Of an object that was read: the SHA-256, hexadecimal, of its compact JSON without "sum", keys in the order of their
/// code units.
QString sumOf(QJsonObject object);
