#pragma once

#include <QString>
#include <stdexcept>

namespace tarn
{

// Raised by the store when the database refuses an operation. The text says what
// failed and why, ready to be shown to the author by whoever catches it.
class StoreError : public std::runtime_error
{
public:
    explicit StoreError(const QString& message, bool busy = false)
        : std::runtime_error(message.toStdString()), m_message(message), m_busy(busy)
    {
    }
    const QString& message() const { return m_message; }
    // Another program held the store for longer than the wait.
    bool busy() const { return m_busy; }

private:
    QString m_message;
    bool m_busy;
};

} // namespace tarn
