#ifndef QOR_CLI_PIPE_CMD_TREE_H
#define QOR_CLI_PIPE_CMD_TREE_H

#include "AutoCompleteTree.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The command tree of this component.
//
// Built by the commands' constructors, emptied when the plug-in is terminated,
// destroyed when the library is unloaded. It owns its nodes; the commands are
// singletons. One call at a time.
class PipeCmdTree : public QorCliUtilities::AutoCompleteTree,
                    public Qor::Singleton<PipeCmdTree> {};

}  // namespace QorCliPipe

#endif
