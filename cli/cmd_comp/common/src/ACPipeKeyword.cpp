#include "ACPipeKeyword.h"

#include <utility>

namespace QorCliUtilities {
namespace {

KeywordSettings asPipeCommand(KeywordSettings settings) {
  settings.completionToken = QOR_CLI_TOKEN_PIPE_COMMAND;
  settings.offerWhenEmpty = true;
  return settings;
}

}  // namespace

ACPipeKeyword::ACPipeKeyword(std::string const& keyword,
                             std::string const& help, std::set<unsigned> modes,
                             bool potentialTerminalNode)
    : ACPipeKeyword(keyword, help, std::move(modes), potentialTerminalNode,
                    false, QOR_CLI_TOKEN_PIPE_COMMAND, false, true, false,
                    false, false) {}

ACPipeKeyword::ACPipeKeyword(std::string const& keyword,
                             std::string const& help, std::set<unsigned> modes,
                             bool potentialTerminalNode, bool hidden,
                             QorCliCompletionToken_1T, bool splitAlternatives,
                             bool, bool variantCompletion, bool requiresCursor,
                             bool forbidsCursor)
    : ACKeyword(keyword, help, std::move(modes), potentialTerminalNode, hidden,
                QOR_CLI_TOKEN_PIPE_COMMAND, splitAlternatives, true,
                variantCompletion, requiresCursor, forbidsCursor) {}

ACPipeKeyword::ACPipeKeyword(KeywordSettings const& settings)
    : ACKeyword(asPipeCommand(settings)) {}

ACPipeKeyword::~ACPipeKeyword() = default;

}  // namespace QorCliUtilities
