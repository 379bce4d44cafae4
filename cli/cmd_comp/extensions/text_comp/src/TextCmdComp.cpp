// The plug-in: pipe commands that count, select and number lines.

#include <CommandComponent.h>

#include "BeginCommand.h"
#include "CountCommand.h"
#include "HeadCommand.h"
#include "NumberCommand.h"
#include "TailCommand.h"
#include "UniqueCommand.h"

namespace QorCliText {

struct TextCmdComp
    : QorCliUtilities::CommandComponent<TextCmdComp, BeginCommand, CountCommand,
                                        HeadCommand, NumberCommand, TailCommand,
                                        UniqueCommand> {
  static constexpr char kName[] = "QorCliTextCmdComp";
};

}  // namespace QorCliText

QOR_CLI_ENTRY_POINTS(QorCliText::TextCmdComp)
