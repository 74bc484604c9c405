#pragma once

#include "store/Error.h"

namespace tarn
{

// A class file that cannot be read or written as it stands. The text names the line
// or the class and field concerned.
class ClassFileError : public Error
{
public:
    using Error::Error;
};

} // namespace tarn
