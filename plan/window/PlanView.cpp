#include "plan/window/PlanView.h"

#include "plan/PlanPicture.h"

#include <QFontInfo>
#include <QPainter>

PlanView::PlanView(QWidget *parent)
    : QWidget(parent)
{
    setMinimumSize(300, 200);
}

void PlanView::show(const PlanRequest &request, const PlanResult &result)
{
    m_request = request;
    m_result = result;
    update();
}

void PlanView::clear()
{
    m_result.reset();
    update();
}

void PlanView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    if (m_result)
        drawPlan(&p, size(), QFontInfo(font()).pixelSize(), m_request, *m_result);
    else
        p.fillRect(rect(), Qt::white);
}
