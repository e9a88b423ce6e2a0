#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tester {

/// "1,234,567"
std::string groupedNumber(std::size_t number);

/// "1 signal", "1,234 signals"
std::string countedThings(std::size_t count, std::string_view thing);

}  // namespace tester
