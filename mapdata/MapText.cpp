#include "mapdata/MapText.h"

namespace
{

QByteArray energyLine(const QByteArray &energy)
{
    return "# ENERGY = " + energy + " eV\n";
}

QByteArray axisLine(int index, const MapAxisText &axis)
{
    return "# AXIS " + QByteArray::number(index) + ' ' + axis.name + ' ' + axis.unit + ' ' + axis.first + ' ' +
           axis.step + ' ' + QByteArray::number(axis.count - 1) + '\n';
}

} // namespace

QByteArray plainMapHeader(const QByteArray &energy, const MapAxisText &x, const MapAxisText &y)
{
    return "# 1301\n" + energyLine(energy) + axisLine(0, x) + axisLine(1, y);
}

QByteArray columnMapHeader(const QByteArray &energy, const QList<QByteArray> &columns)
{
    QByteArray text = "# 2003901\n" + energyLine(energy);
    for (int i = 0; i < columns.size(); ++i)
        text += "# " + columns[i] + " :" + QByteArray::number(i) + '\n';
    return text;
}
