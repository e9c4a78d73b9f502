#pragma once

#include <QWidgetItem>

#include <functional>
#include <utility>

/// A widget in a layout that takes another rectangle than the one it is given there.
class PlacedItem : public QWidgetItem
{
public:
    /// `place` gives the widget's rectangle for the layout's.
    PlacedItem(QWidget *widget, std::function<QRect(const QRect &)> place)
        : QWidgetItem(widget)
        , m_place(std::move(place))
    {
    }

    void setGeometry(const QRect &rect) override { QWidgetItem::setGeometry(m_place(rect)); }

private:
    std::function<QRect(const QRect &)> m_place;
};
