#include "FilterMap.h"

namespace QorCliPipe {
namespace PipeCmd {

std::map<unsigned, FilterStruct> FilterMap;

}  // namespace PipeCmd
}  // namespace QorCliPipe
