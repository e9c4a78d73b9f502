#pragma once

#include "display/HistogramBins.h"

#include <QObject>

class QCheckBox;
class QLineEdit;

/// A histogram whose range and number of boxes stand in line edits. The owner sets the four widgets.
class Histgram : public QObject, public HistogramBins
{
    Q_OBJECT

public:
    explicit Histgram(QObject *parent = nullptr);

    /// Reads the fields (a text that is no number counts as 0) and empties the boxes. Without fields nothing changes.
    void setUp();

    QLineEdit *minEdit = nullptr; ///< centre of the first box
    QLineEdit *maxEdit = nullptr; ///< centre of the last box
    QLineEdit *numEdit = nullptr; ///< number of boxes
    QCheckBox *check = nullptr;
};
