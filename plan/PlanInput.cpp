#include "plan/PlanInput.h"

#include "numeric/FieldText.h"
#include "numeric/PlainNumber.h"
#include "plan/PlanCandidates.h"
#include "plan/PlanSamples.h"
#include "plan/PlanText.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace
{

QString translated(const char *text)
{
    return QCoreApplication::translate("Plan", text);
}

struct FieldTexts {
    const char *name;
    const char *note;
};

/// In the order of PlanField.
constexpr FieldTexts fieldTexts[] = {
    {QT_TRANSLATE_NOOP("Plan", "Energies"), QT_TRANSLATE_NOOP("Plan", "How many energies to plan")},
    {QT_TRANSLATE_NOOP("Plan", "From [eV]"),
     QT_TRANSLATE_NOOP("Plan", "Lowest candidate; empty: 100 eV before the edge, as far as all references reach")},
    {QT_TRANSLATE_NOOP("Plan", "To [eV]"),
     QT_TRANSLATE_NOOP("Plan", "Highest candidate; empty: 200 eV behind the edge, as far as all references reach")},
    {QT_TRANSLATE_NOOP("Plan", "Step [eV]"),
     QT_TRANSLATE_NOOP("Plan", "Step of the candidates; empty: 0.5 eV near the edge, 5 eV elsewhere")},
    {QT_TRANSLATE_NOOP("Plan", "Spacing [eV]"), QT_TRANSLATE_NOOP("Plan", "Smallest distance of two energies")},
    {QT_TRANSLATE_NOOP("Plan", "Keep [eV]"),
     QT_TRANSLATE_NOOP("Plan", "Energies that belong to the plan in any case, separated by blanks")},
    {QT_TRANSLATE_NOOP("Plan", "Counts"),
     QT_TRANSLATE_NOOP("Plan", "Transmission: quanta of I0 per exposure and pixel; fluorescence: quanta where the "
                               "absorption is 1")},
    {QT_TRANSLATE_NOOP("Plan", "Background"),
     QT_TRANSLATE_NOOP("Plan", "Transmission: absorption of everything else; fluorescence: the background's share of "
                               "the signal, below 1")},
    {QT_TRANSLATE_NOOP("Plan", "Reproducible to [eV]"),
     QT_TRANSLATE_NOOP("Plan", "Standard deviation of the monochromator's energies")},
    {QT_TRANSLATE_NOOP("Plan", "Amount t"),
     QT_TRANSLATE_NOOP("Plan", "Amount of the samples to plan for, as the method gives it; empty: that of the target, "
                               "or 1")},
    {QT_TRANSLATE_NOOP("Plan", "Samples"),
     QT_TRANSLATE_NOOP("Plan", "Fractions of the references in the samples to plan for, such as 1 0; 0.5 0.5; empty: "
                               "each reference alone and the equal mixture")},
};
static_assert(std::size(fieldTexts) == planFieldCount);

const FieldTexts &textsOf(PlanField field)
{
    return fieldTexts[static_cast<std::size_t>(field)];
}

PlanMethod methodOf(const Conditions &conditions)
{
    if (conditions.isNonEquivalent)
        return conditions.isLinear ? PlanMethod::LinearNonEquivalent : PlanMethod::VictoreenNonEquivalent;
    return conditions.isExact ? PlanMethod::ExactFourPoints : PlanMethod::LeastSquaresFourPoints;
}

std::optional<double> numberIn(const QString &text)
{
    bool isNumber = false;
    const double value = numeric::plainNumber(text.trimmed()).text.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

/// None when one of them is no number.
std::optional<std::vector<double>> numbersIn(const QString &text)
{
    std::vector<double> numbers;
    for (const QString &part : text.simplified().split(QLatin1Char(' '))) {
        const std::optional<double> number = numberIn(part);
        if (!number && !part.isEmpty())
            return std::nullopt;
        if (number)
            numbers.push_back(*number);
    }
    return numbers;
}

/// Takes fields until one is wrong.
class FieldReader
{
public:
    FieldReader(const PlanFields &fields, PlanRequest *request)
        : m_fields(fields)
        , m_request(*request)
    {
    }
    QString read();

private:
    /// `target` stays as it is for an empty field.
    template <class Number, class Condition>
    void take(PlanField field, Number *target, PlanText rule, Condition isGood);
    void takeCount();
    void takeKept();
    void takeSamples();
    void fail(PlanField field, PlanText rule) { m_mistake = planText(rule).arg(planFieldName(field)); }

    const PlanFields &m_fields;
    PlanRequest &m_request;
    QString m_mistake;
};

template <class Number, class Condition>
void FieldReader::take(PlanField field, Number *target, PlanText rule, Condition isGood)
{
    if (!m_mistake.isEmpty() || m_fields[field].trimmed().isEmpty())
        return;
    const std::optional<double> value = numberIn(m_fields[field]);
    if (!value || !isGood(*value)) {
        fail(field, rule);
        return;
    }
    const double number = *value;
    *target = number; // which may be optional
}

QString FieldReader::read()
{
    const auto any = [](double) {
        return true;
    };
    const auto isPositive = [](double value) {
        return value > 0.0;
    };
    const auto isNotNegative = [](double value) {
        return value >= 0.0;
    };
    m_request.hasExtraTerm = m_fields.hasExtraTerm;
    m_request.mode = m_fields.isFluorescence ? PlanMode::Fluorescence : PlanMode::Transmission;
    takeCount();
    take(PlanField::From, &m_request.from, PlanText::NotANumber, any);
    take(PlanField::To, &m_request.to, PlanText::NotANumber, any);
    take(PlanField::Step, &m_request.step, PlanText::NotPositive, isPositive);
    take(PlanField::Spacing, &m_request.spacing, PlanText::Negative, isNotNegative);
    takeKept();
    take(PlanField::Counts, &m_request.counts, PlanText::NotPositive, isPositive);
    if (m_fields.isFluorescence)
        take(PlanField::Background, &m_request.background, PlanText::NoShare,
             [](double value) { return value >= 0.0 && value < 1.0; });
    else
        take(PlanField::Background, &m_request.background, PlanText::NotANumber,
             [](double value) { return std::abs(value) < 700.0; }); // beyond it exp() has no value
    take(PlanField::DeltaE, &m_request.deltaE, PlanText::Negative, isNotNegative);
    take(PlanField::Thickness, &m_request.thickness, PlanText::NotPositive, isPositive);
    takeSamples();
    return m_mistake;
}

void FieldReader::takeCount()
{
    double count = m_request.count;
    take(PlanField::Count, &count, PlanText::NotWhole,
         [](double value) { return value >= 1.0 && value <= 100.0 && value == std::floor(value); });
    m_request.count = static_cast<int>(count);
}

void FieldReader::takeKept()
{
    const std::optional<std::vector<double>> kept = numbersIn(m_fields[PlanField::Keep]);
    if (kept)
        m_request.keep = *kept;
    else if (m_mistake.isEmpty())
        fail(PlanField::Keep, PlanText::NotANumber);
}

void FieldReader::takeSamples()
{
    const QString text = m_fields[PlanField::Samples].trimmed();
    if (!m_mistake.isEmpty() || text.isEmpty())
        return;
    const std::size_t references = planReferences(m_request);
    for (const QString &part : text.split(QLatin1Char(';'))) {
        const std::vector<double> fractions = numbersIn(part).value_or(std::vector<double>());
        double sum = 0.0;
        for (const double fraction : fractions)
            sum += fraction;
        if (fractions.size() != references || !(sum > 0.0)) {
            m_mistake = planText(PlanText::BadSample).arg(part.trimmed()).arg(references);
            return;
        }
        m_request.scenarios.push_back({fractions, m_request.thickness});
    }
}

} // namespace

PlanRequest planRequest(const AnalysisInput &now)
{
    PlanRequest request;
    request.method = methodOf(now.conditions);
    request.subtractsPostLine = now.conditions.subtractsPostLineOfReferences;
    request.edge = now.conditions.edge.edge;
    request.count = std::min(request.count, mostPlanEnergies(request.method));
    for (const ReferenceInput &reference : now.references) {
        if (reference.takesPart())
            request.references.push_back(
                {QFileInfo(reference.spectrum.fileName()).completeBaseName(), reference.spectrum, reference.valence});
    }
    if (now.target.spectrum.valid())
        request.thickness = planThickness(request, now.target.spectrum);
    PlanList present = {planText(PlanText::Present), {}, -1};
    for (const PointInput &point : now.points) {
        if (!point.isUsed || !(point.energy > 0.0))
            continue;
        if (point.isVPoint)
            present.vPoint = static_cast<int>(present.energies.size());
        present.energies.push_back(point.energy);
    }
    if (!present.energies.empty())
        request.compare.push_back(present);
    return request;
}

QString planFieldName(PlanField field)
{
    return translated(textsOf(field).name);
}

QString planFieldNote(PlanField field)
{
    return translated(textsOf(field).note);
}

QString planFieldDefault(PlanField field, const PlanRequest &request)
{
    const bool hasReferences = !request.references.empty();
    const std::vector<double> candidates = hasReferences ? planCandidates(request) : std::vector<double>();
    switch (field) {
    case PlanField::Count:
        return QString::number(request.count);
    case PlanField::From:
        return candidates.empty() ? QString() : fieldText(candidates.front());
    case PlanField::To:
        return candidates.empty() ? QString() : fieldText(candidates.back());
    case PlanField::Step:
        return QStringLiteral("0.5 / 5");
    case PlanField::Spacing:
        return fieldText(request.spacing);
    case PlanField::Counts:
        return QString::number(request.counts, 'f', 0);
    case PlanField::Background:
        return fieldText(request.background);
    case PlanField::DeltaE:
        return fieldText(request.deltaE);
    case PlanField::Thickness:
        return fieldText(request.thickness);
    case PlanField::Keep:
        break;
    case PlanField::Samples:
        return planText(PlanText::UsualSamples);
    }
    return QString();
}

QString takeFields(const PlanFields &fields, PlanRequest *request)
{
    return FieldReader(fields, request).read();
}

QString dropUnfitLists(PlanRequest *request)
{
    QString last;
    const std::vector<PlanList> lists = request->compare;
    request->compare.clear();
    if (!planMistake(*request).isEmpty()) // to be said about the plan itself
        return last;
    std::vector<PlanList> fit;
    for (const PlanList &list : lists) {
        request->compare = {list};
        const QString mistake = planMistake(*request);
        if (mistake.isEmpty())
            fit.push_back(list);
        else
            last = planText(PlanText::NotCompared).arg(mistake);
    }
    request->compare = fit;
    return last;
}

QString planSubject(const PlanRequest &request)
{
    QStringList names;
    for (std::size_t j = 0; j < planReferences(request); ++j)
        names << QStringLiteral("%1 (%2)").arg(request.references[j].name, fieldText(request.references[j].valence));
    const QString text = translated(QT_TRANSLATE_NOOP("Plan", "%1; edge %2 eV; references (valence): %3"));
    return text.arg(planText(PlanText::Method).arg(planMethodName(request.method)), fieldText(request.edge),
                    names.isEmpty() ? QStringLiteral("-") : names.join(QStringLiteral(", ")));
}

int planVPoint(const PlanRequest &request, const PlannedSet &set)
{
    if (set.vPoint >= 0 || request.references.size() < 2)
        return set.vPoint;
    int vPoint = -1;
    double largest = -1.0;
    const std::vector<double> jumps = planJumps(request);
    for (std::size_t k = 0; k < set.energies.size(); ++k) {
        const PlanPoint point = planPoint(request, set.energies[k]);
        const double difference = std::abs(point.absorption[0] / jumps[0] - point.absorption[1] / jumps[1]);
        if (difference > largest) {
            largest = difference;
            vPoint = static_cast<int>(k);
        }
    }
    return vPoint;
}
