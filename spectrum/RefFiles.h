#pragma once

#include <QObject>

class ARefFile;

/// Gathers the signals of the reference rows, whichever row sends them.
class RefFiles : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Passes on the signals of a row from now on.
    void add(ARefFile *row);

signals:
    void changedUse();
    void selectedFile();
};
