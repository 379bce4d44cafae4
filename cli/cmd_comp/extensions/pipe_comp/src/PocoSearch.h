#ifndef QOR_CLI_POCO_SEARCH_H
#define QOR_CLI_POCO_SEARCH_H

#include <Poco/RegularExpression.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "CompileDemand.h"
#include "InterpretedExpression.h"
#include "JitExpression.h"

namespace QorCliPipe {

// The options under which Poco means the same whatever PCRE library it is built
// on: what ends a line within a text is a line feed, which no line has.
int pocoOptions(bool ignoreCase);

// Looks for a match with Poco: under limits on its steps, and on its recursion
// such that it fits the stack that is left, or on its memory where it matches
// there. Where a pattern has more groups than Poco can report, the library is
// asked in its place. Used by one thread at a time.
class PocoSearch {
 public:
  using Answer = JitExpression::Answer;

  // `pattern` is one that Poco accepts, `traits` what the library says of it,
  // `demand` what it takes to compile it.
  PocoSearch(std::string const& pattern, bool ignoreCase,
             JitExpression::Traits const& traits, CompileDemand const& demand);

  // Takes a copy of the line that the other two look at, and a look at the
  // stack that is left to the caller of all three.
  void setLine(std::string_view line);

  // Looks for the first match. Undecided when more than `stepLimit` steps would
  // be needed from one beginning, or too deep a recursion, or when the line is
  // not in the UTF-8 that the pattern wants.
  Answer search(std::uint32_t stepLimit);

  // As search, for a match that begins at `start`, at most the line's length.
  Answer matchAt(std::size_t start, std::uint32_t stepLimit);

 private:
  Answer match(std::size_t start, JitExpression::Beginning beginning,
               std::uint32_t stepLimit);
  Answer matchWithPoco(std::size_t start, std::uint32_t stepLimit, int options);
  Poco::RegularExpression& limited(std::uint32_t stepLimit);

  std::string pattern_;
  int options_;
  bool isUtf8_;
  CompileDemand demand_;
  std::optional<InterpretedExpression> manyGroups_;
  std::string line_;
  bool isLineChecked_ = false;
  std::size_t recursion_ = 0;
  // The expression under the limits it was last used with.
  std::optional<Poco::RegularExpression> limited_;
  std::string limits_;
};

}  // namespace QorCliPipe

#endif
