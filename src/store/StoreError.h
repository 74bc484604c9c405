#pragma once

#include "Error.h"

namespace tarn
{

// Raised by the store when the database refuses an operation.
class StoreError : public Error
{
public:
    explicit StoreError(const QString& message, bool busy = false) : Error(message), m_busy(busy) {}
    // Another program held the store for longer than the wait.
    bool busy() const { return m_busy; }

private:
    bool m_busy;
};

} // namespace tarn
