#include "AutoCompleteNode.h"

#include <Poco/Ascii.h>

#include <algorithm>
#include <utility>

#include "Error.h"
#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

constexpr char kRootKeyword[] = "Root";

[[noreturn]] void rejectValueSemantics() { throw Error("Hit private code", 0); }

bool equalIgnoringAsciiCase(char a, char b) {
  auto const folded = [](char c) {
    return Poco::Ascii::toLower(static_cast<unsigned char>(c));
  };
  return folded(a) == folded(b);
}

}  // namespace

AutoCompleteNode::AutoCompleteNode(AbstractCommand* command)
    : command_(command) {}

AutoCompleteNode::AutoCompleteNode(std::set<unsigned> modes,
                                   Validation_Type validationType,
                                   bool potentialTerminalNode, bool hidden)
    : modes_(std::move(modes)),
      potentialTerminalNode_(potentialTerminalNode),
      hidden_(hidden),
      validationType_(validationType) {}

AutoCompleteNode::AutoCompleteNode(AutoCompleteNode const&) {
  rejectValueSemantics();
}

AutoCompleteNode& AutoCompleteNode::operator=(AutoCompleteNode const&) {
  rejectValueSemantics();
}

bool AutoCompleteNode::operator==(AutoCompleteNode const&) const {
  rejectValueSemantics();
}

std::string AutoCompleteNode::keyword() const {
  OperationTrace const trace;
  return trace.exitWith(toShortString());
}

int AutoCompleteNode::autoComplete(CliApiContext&,
                                   std::vector<std::string> const&,
                                   std::string const&, unsigned&, bool, bool,
                                   std::vector<AutoCompleteResult>&, IOutput&) {
  return OperationTrace().exitWith(0);
}

bool AutoCompleteNode::isMatch(CliApiContext&, std::vector<std::string> const&,
                               unsigned&, IOutput&, bool) {
  return OperationTrace().exitWith(false);
}

bool AutoCompleteNode::isMultiTokenNode() const {
  return OperationTrace().exitWith(false);
}

bool AutoCompleteNode::isLastMultiTokenElement(CliApiContext&) const {
  return OperationTrace().exitWith(false);
}

void AutoCompleteNode::resetNode(CliApiContext&) {
  OperationTrace const trace;
  trace.exit();
}

bool AutoCompleteNode::ignoreCase() const {
  return OperationTrace().exitWith(false);
}

bool AutoCompleteNode::internalSpacesAllowed() const {
  return OperationTrace().exitWith(false);
}

bool AutoCompleteNode::doNoAddCRCompletion(
    CliApiContext const&, std::vector<std::string> const&) const {
  return OperationTrace().exitWith(false);
}

std::string AutoCompleteNode::toString() const {
  OperationTrace const trace;
  return trace.exitWith(command_ == nullptr
                            ? kRootKeyword
                            : std::string(command_->name()) + " command");
}

std::string AutoCompleteNode::toShortString() const {
  OperationTrace const trace;
  return trace.exitWith(toString());
}

bool AutoCompleteNode::isValidForMode(QorCliModeEnum_1T mode) const {
  OperationTrace const trace;
  return trace.exitWith(isRoot() || modes_.count(QOR_CLI_MODE_ANY) != 0 ||
                        modes_.count(mode) != 0);
}

bool AutoCompleteNode::isRoot() const {
  OperationTrace const trace;
  return trace.exitWith(keyword() == kRootKeyword);
}

bool AutoCompleteNode::isExecutable() const {
  return OperationTrace().exitWith(command_ != nullptr);
}

bool AutoCompleteNode::isHidden() const {
  return OperationTrace().exitWith(hidden_);
}

void AutoCompleteNode::unsetHidden() {
  OperationTrace const trace;
  hidden_ = false;
  trace.exit();
}

bool AutoCompleteNode::potentialTerminalNode() const {
  return OperationTrace().exitWith(potentialTerminalNode_);
}

void AutoCompleteNode::setPotentialTerminalNode(bool value) {
  OperationTrace const trace;
  potentialTerminalNode_ = value;
  trace.exit();
}

Validation_Type AutoCompleteNode::validationType() const {
  return OperationTrace().exitWith(validationType_);
}

void AutoCompleteNode::setValidationType(Validation_Type value) {
  OperationTrace const trace;
  validationType_ = value;
  trace.exit();
}

void AutoCompleteNode::addState(AutoCompleteNode const& other) {
  OperationTrace const trace;
  modes_.insert(other.modes_.begin(), other.modes_.end());
  trace.exit();
}

bool AutoCompleteNode::isAuthorized(CliApiContext& context) const {
  OperationTrace const trace;
  return trace.exitWith(!isExecutable() || command_->isAuthorized(context));
}

int AutoCompleteNode::execute(CliApiContext& context,
                              std::vector<std::string> const& tokens,
                              IOutput& output) {
  OperationTrace const trace;
  if (!isExecutable()) {
    QOR_CLI_TRACE("Attempt to execute invalid node '%s'", toString().c_str());
    return trace.exitWith(-1);
  }
  if (!isAuthorized(context)) {
    output.push_back(std::string("Not allowed"));
    QOR_CLI_TRACE("Authorization failed for node '%s'", toString().c_str());
    return trace.exitWith(-1);
  }
  return trace.exitWith(command_->executeVerbose(context, tokens, output));
}

bool AutoCompleteNode::match(std::string candidate, std::string typed) {
  if (typed.size() > candidate.size()) return false;
  OperationTrace const trace;
  return trace.exitWith(std::equal(typed.begin(), typed.end(),
                                   candidate.begin(), equalIgnoringAsciiCase));
}

std::string AutoCompleteNode::extractToken(
    std::vector<std::string> const& tokens, unsigned& position) {
  OperationTrace const trace;
  std::string token;
  if (position < tokens.size()) token = tokens[position];
  ++position;
  return trace.exitWith(std::move(token));
}

void AutoCompleteNode::addPossibility(
    AutoCompleteResult::SortIndex sortIndex, std::string completion,
    std::string help, QorCliCompletionToken_1T token,
    std::vector<AutoCompleteResult>& results) {
  OperationTrace const trace;
  results.push_back(
      {token, std::move(completion), std::move(help), std::move(sortIndex)});
  trace.exit();
}

}  // namespace QorCliUtilities
