#ifndef QOR_CLI_ENGINE_ARGUMENTS_NODE_H
#define QOR_CLI_ENGINE_ARGUMENTS_NODE_H

#include <string>
#include <vector>

#include "AutoCompleteNode.h"

namespace QorCliEngine {

// The arguments of one of the engine's own commands: any words, at least one.
//
// Offers a placeholder while a word may begin or is being typed, and "<cr>"
// after the first word. Valid in every mode.
class ArgumentsNode : public QorCliUtilities::AutoCompleteNode {
 public:
  enum class Count { kOne, kMany };

  // `wordsBefore`: how many words of the command stand before the arguments.
  // `placeholder` ("<text>") and `help` are what is offered.
  ArgumentsNode(unsigned wordsBefore, Count count, std::string placeholder,
                std::string help);

  int autoComplete(QorCliUtilities::CliApiContext& ctx,
                   std::vector<std::string> const& tokens,
                   std::string const& lastToken, unsigned& position,
                   bool endsWithSpace, bool helpRequest,
                   std::vector<QorCliUtilities::AutoCompleteResult>& results,
                   QorCliUtilities::IOutput& output) override;
  bool isMatch(QorCliUtilities::CliApiContext& ctx,
               std::vector<std::string> const& tokens, unsigned& position,
               QorCliUtilities::IOutput& output, bool executing) override;
  bool isMultiTokenNode() const override;
  bool isLastMultiTokenElement(
      QorCliUtilities::CliApiContext& ctx) const override;
  void resetNode(QorCliUtilities::CliApiContext& ctx) override;
  std::string toShortString() const override;

 protected:
  // Whether `word` may be the first argument, or begin it; a word is completed
  // only after one that may. Any may, in this class.
  virtual bool mayBeFirst(std::string const& word) const;

  // Adds the candidates for argument `index`, counted from 0, of which `word`
  // has been typed, perhaps nothing yet; none, in this class.
  virtual void offerWords(
      std::size_t index, std::string const& word,
      std::vector<QorCliUtilities::AutoCompleteResult>& results) const;

 private:
  void offer(std::string const& text, std::string const& help,
             QorCliCompletionToken_1T token,
             std::vector<QorCliUtilities::AutoCompleteResult>& results) const;

  unsigned wordsBefore_;
  Count count_;
  std::string placeholder_;
  std::string help_;
  bool atLastOfSeveral_ = false;
};

}  // namespace QorCliEngine

#endif
