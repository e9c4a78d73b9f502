#include "spectrum/SpectrumText.h"

QByteArray spectrumHead(const SpectrumHead &head)
{
    QByteArray text;
    for (const QByteArray &title : head.titles)
        text += ' ' + title + '\n';
    text += " Mono : " + head.crystal + "   D= " + head.spacing + " A   First angle= " + head.firstAngle + " deg\n";
    text += ' ' + head.method + "   Repetition= 1   Points= " + QByteArray::number(head.points) + '\n';
    text += "    Angle(c)     Angle(o)  time/s              I0               I\n";
    text += "        Mode            0       0               1               " + QByteArray::number(head.mode) + '\n';
    text += "      Offset            0       0           0.000           0.000\n";
    return text;
}
