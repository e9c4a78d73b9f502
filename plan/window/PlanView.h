#pragma once

#include "plan/PlanResult.h"

#include <QWidget>

#include <optional>

/// The picture of a plan; white without one.
class PlanView : public QWidget
{
    Q_OBJECT

public:
    explicit PlanView(QWidget *parent = nullptr);

    void show(const PlanRequest &request, const PlanResult &result);
    void clear();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PlanRequest m_request;
    std::optional<PlanResult> m_result;
};
