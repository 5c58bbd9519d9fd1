#pragma once

#include "recordset/error.h"

/// The last run-time error of a routine that passes over its failed statements, one object for each
/// activation of the routine. Each statement runs singly through run() or test(), so that the one after a
/// failed one still runs. Only RuntimeError is passed over; a disk that fails ends the routine's action, and
/// the program lives where it is known what the file holds.
class IgnoringErrors {
public:
    /// Runs one statement; false where it failed. Throws ActionEnded where the disk or the file failed.
    template <typename Statement> bool run(Statement&& statement) {
        try {
            statement();
            return true;
        } catch (const RuntimeError& error) {
            m_number = error.number();
            return false;
        } catch (const DatabaseLost& lost) {
            // Where nobody knows what the file holds, the program must read it anew.
            if (lost.outcome() == Outcome::Unknown)
                throw;
            throw ActionEnded(lost.text(), lost.outcome() == Outcome::Booked);
        }
    }

    /// Tests one condition; a condition that fails counts as false.
    template <typename Condition> bool test(Condition&& condition) {
        bool result = false;
        run([&] { result = condition(); });
        return result;
    }

    /// Number of the last error, 0 if none came since the last clear(). A later success leaves it.
    int number() const { return m_number; }
    void clear() { m_number = 0; }

private:
    int m_number = 0;
};
