// Recursion over Python values and dimensions, which ends in an exception before it ends the stack.
#pragma once

#include "vocabulary/python.h"

namespace quarna {

/// One level of recursion, for as long as it lives. Without room for it, RecursionError is set and it is false.
class RecursionLevel {
public:
    explicit RecursionLevel(const char* where);
    RecursionLevel(RecursionLevel const&) = delete;
    RecursionLevel& operator=(RecursionLevel const&) = delete;
    ~RecursionLevel();

    explicit operator bool() const { return m_entered; }

private:
    bool m_entered;
};

}  // namespace quarna
