#pragma once

#include <functional>
#include <utility>

/// Runs a calculation when it is wanted; at the end of a scope that is open at that time, and once for all that was
/// wanted inside. Every change made by one action of the user stands in one scope.
class Recalculation
{
public:
    /// What was asked for; the whole includes what is quiet about it.
    enum class Wanted {
        Nothing,
        Quietly, ///< only what has changed and can be calculated
        Whole    ///< every step, each with its message
    };

    explicit Recalculation(std::function<void(Wanted)> run)
        : m_run(std::move(run))
    {
    }

    /// Runs now, or at the end of the outermost open scope.
    void wanted(Wanted what = Wanted::Whole)
    {
        m_wanted = what > m_wanted ? what : m_wanted;
        runIfDue();
    }
    /// Whether a scope is open: what is shown now may be half of a change.
    bool isHeld() const { return m_scopes > 0; }

    class Scope
    {
    public:
        explicit Scope(Recalculation &recalculation)
            : m_recalculation(recalculation)
        {
            ++m_recalculation.m_scopes;
        }
        ~Scope()
        {
            --m_recalculation.m_scopes;
            m_recalculation.runIfDue();
        }
        Scope(const Scope &) = delete;
        Scope &operator=(const Scope &) = delete;

        /// Nothing that was wanted so far is run.
        void drop() { m_recalculation.m_wanted = Wanted::Nothing; }

    private:
        Recalculation &m_recalculation;
    };

private:
    void runIfDue()
    {
        if (m_scopes > 0 || m_wanted == Wanted::Nothing)
            return;
        m_run(std::exchange(m_wanted, Wanted::Nothing));
    }

    std::function<void(Wanted)> m_run;
    int m_scopes = 0;
    Wanted m_wanted = Wanted::Nothing;
};
