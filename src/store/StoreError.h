#pragma once

#include "Error.h"

namespace tarn
{

// Raised by the store when the database refuses an operation.
class StoreError : public Error
{
public:
    enum class Cause {
        Other,
        Busy, // another program held the store for longer than the wait
        Gone, // the row is no longer there: another program deleted it
    };
    explicit StoreError(const QString& message, Cause cause = Cause::Other) : Error(message), m_cause(cause) {}
    bool busy() const { return m_cause == Cause::Busy; }
    bool gone() const { return m_cause == Cause::Gone; }

private:
    Cause m_cause;
};

} // namespace tarn
