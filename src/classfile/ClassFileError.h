#pragma once

#include <QString>
#include <stdexcept>

namespace tarn
{

// A class file that cannot be read or written as it stands. The text names the line
// or the class and field concerned, ready to be shown to the author.
class ClassFileError : public std::runtime_error
{
public:
    explicit ClassFileError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
    const QString& message() const { return m_message; }

private:
    QString m_message;
};

} // namespace tarn
