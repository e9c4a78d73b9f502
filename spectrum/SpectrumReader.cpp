#include "spectrum/SpectrumReader.h"

#include "numeric/TextScanner.h"
#include "numeric/TextToNumber.h"

#include <QByteArray>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

using numeric::textToDouble;
using numeric::textToInt;
using numeric::TokenScanner;

namespace
{

constexpr double hcInKeVAngstrom = 12.398424360387684; // fixed, as every energy follows from it; 4e-7 above CODATA 2018
constexpr double silicon111Spacing = 3.1355316;        // angstrom
constexpr double degreesPi = 3.1415926535;             // ten decimals are part of the energy scale
constexpr int i0Mode = 1;
constexpr int transmissionMode = 2;
constexpr int fluorescenceMode = 3;
constexpr std::size_t firstChannel = 3; // token index of the first channel

class SpectrumParser
{
public:
    SpectrumParser() { forgetPoints(); }

    void readLine(std::string_view line);
    SpectrumScan finish();

private:
    std::size_t wantedTokens() const
    {
        return std::max({std::size_t(5), firstChannel + m_modes.size(), m_hasI0 ? m_i0Column + 1 : 0});
    }
    void forgetPoints();
    void readData();
    double transmission(double i0) const;
    double fluorescence(double i0) const;
    void readModes(std::string_view line);
    double number(std::size_t token) const { return token < m_tokens.size() ? textToDouble(m_tokens[token]) : 0.0; }

    SpectrumScan m_scan;
    double m_spacing = silicon111Spacing;
    int m_measurement = -1;
    bool m_hasI0 = false;
    std::size_t m_i0Column = 0;
    std::vector<int> m_modes; // of each channel
    bool m_modeSeen = false;
    bool m_inData = false;
    std::vector<std::string_view> m_tokens; // the first tokens of the line, as many as a data line can need
};

void SpectrumParser::forgetPoints()
{
    m_scan.points.clear();
    for (Extremes *extremes : {&m_scan.angle, &m_scan.energy, &m_scan.mu})
        extremes->reset();
}

void SpectrumParser::readLine(std::string_view line)
{
    const std::size_t wanted = wantedTokens();
    bool isMode = false;
    bool isOffset = false;
    bool spacingFollows = false;
    std::string_view spacing;
    m_tokens.clear();

    TokenScanner scanner(line);
    std::string_view token;
    bool afterSpacingKey = false;
    while (scanner.next(&token)) {
        if (m_tokens.size() < wanted)
            m_tokens.push_back(token);
        if (afterSpacingKey && !spacingFollows) {
            spacing = token;
            spacingFollows = true;
        }
        isMode = isMode || token == "Mode";
        isOffset = isOffset || token == "Offset";
        afterSpacingKey = afterSpacingKey || token == "D=";
    }

    // The data test comes first: keywords on a data line act on the lines that follow.
    if (m_inData && m_tokens.size() > 4)
        readData();
    if (isMode)
        readModes(line);
    if (isOffset)
        m_inData = true;
    if (spacingFollows)
        m_spacing = textToDouble(spacing);
}

void SpectrumParser::readModes(std::string_view line)
{
    m_modeSeen = true;
    TokenScanner scanner(line);
    std::string_view token;
    for (std::size_t i = 0; scanner.next(&token); ++i) {
        if (i < firstChannel)
            continue;
        const int mode = textToInt(token);
        m_modes.push_back(mode);
        if (mode == i0Mode) {
            m_hasI0 = true;
            m_i0Column = i;
        }
        if (m_measurement == -1 && mode >= 2)
            m_measurement = mode;
    }
}

void SpectrumParser::readData()
{
    SpectrumPoint point;
    point.angle = number(1);
    // Bragg's law: lambda = 2 d sin(theta), E = hc / lambda; in eV.
    point.energy = hcInKeVAngstrom / (2 * m_spacing * std::sin(point.angle * degreesPi / 180)) * 1000;
    const double i0 = m_hasI0 ? number(m_i0Column) : 0.0;
    if (m_measurement == transmissionMode)
        point.mu = transmission(i0);
    else if (m_measurement == fluorescenceMode)
        point.mu = fluorescence(i0);
    m_scan.points.append(point);
    m_scan.angle.add(point.angle);
    m_scan.energy.add(point.energy);
    m_scan.mu.add(point.mu);
}

/// Beer and Lambert's law: ln(I0 / I) of the first transmission channel, 0 without one.
double SpectrumParser::transmission(double i0) const
{
    for (std::size_t k = 0; k < m_modes.size() && k + firstChannel < m_tokens.size(); ++k) {
        if (m_modes[k] == transmissionMode)
            return std::log(i0 / number(k + firstChannel));
    }
    return 0.0;
}

/// The sum of I / I0 over the fluorescence channels, 0 without any: proportional to mu in a thin or dilute sample.
double SpectrumParser::fluorescence(double i0) const
{
    double mu = 0.0;
    for (std::size_t k = 0; k < m_modes.size() && k + firstChannel < m_tokens.size(); ++k) {
        if (m_modes[k] == fluorescenceMode)
            mu += number(k + firstChannel) / i0;
    }
    return mu;
}

SpectrumScan SpectrumParser::finish()
{
    m_scan.isSupported = !m_modeSeen || m_hasI0;
    if (!m_scan.isSupported)
        forgetPoints();
    m_scan.hasData = m_inData && !m_scan.points.isEmpty();
    return m_scan;
}

} // namespace

SpectrumScan parseSpectrum(std::string_view text)
{
    QByteArray decoded;
    if (numeric::isWideText(text)) {
        decoded = numeric::wideTextToUtf8(QByteArray::fromRawData(text.data(), static_cast<int>(text.size())));
        text = std::string_view(decoded.constData(), static_cast<std::size_t>(decoded.size()));
    }
    text.remove_prefix(static_cast<std::size_t>(numeric::utf8MarkLength(text)));

    SpectrumParser parser;
    numeric::LineScanner lines(text);
    std::string_view line;
    while (lines.next(&line))
        parser.readLine(line);
    return parser.finish();
}
