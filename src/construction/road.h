// How a fast road ends.
#pragma once

namespace quarna {

/// Taken to its end; declined, with nothing done that can be seen, for the general road to begin anew; or failed with
/// an exception set, which no other road could avoid.
enum class Road { Taken, Declined, Failed };

}  // namespace quarna
