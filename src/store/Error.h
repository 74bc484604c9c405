#pragma once

#include <QString>
#include <stdexcept>

namespace tarn
{

// The one shape of every failure the program reports: a text that says what failed
// and why, ready to be shown to the author by whoever catches it.
class Error : public std::runtime_error
{
public:
    explicit Error(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
    const QString& message() const { return m_message; }

private:
    QString m_message;
};

} // namespace tarn
