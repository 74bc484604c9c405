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
    explicit StoreError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
    const QString& message() const { return m_message; }

private:
    QString m_message;
};

} // namespace tarn
