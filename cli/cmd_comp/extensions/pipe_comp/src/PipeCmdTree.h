#ifndef QOR_CLI_PIPE_CMD_TREE_H
#define QOR_CLI_PIPE_CMD_TREE_H

#include "AutoCompleteTree.h"
#include "QorSingleton.h"

namespace QorCliPipe {

// The command tree of this component, apart from any other component's.
//
// Filled by the commands when they are created, emptied by the termination of
// the plug-in, destroyed when the library is unloaded. It owns its nodes; the
// commands are singletons beside it. One call at a time.
class PipeCmdTree : public QorCliUtilities::AutoCompleteTree,
                    public Qor::Singleton<PipeCmdTree> {};

}  // namespace QorCliPipe

#endif
