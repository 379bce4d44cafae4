#ifndef QOR_CLI_PIPE_OUTPUT1_H
#define QOR_CLI_PIPE_OUTPUT1_H

#include "LinesOutput.h"

namespace QorCliPipe {

// The sink of this component: the command's input before it runs, its output
// afterwards.
class PipeOutput1 : public QorCliUtilities::LinesOutput {};

}  // namespace QorCliPipe

#endif
