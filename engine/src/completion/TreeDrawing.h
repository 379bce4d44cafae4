#ifndef QOR_CLI_ENGINE_TREE_DRAWING_H
#define QOR_CLI_ENGINE_TREE_DRAWING_H

#include <cstddef>
#include <string>
#include <vector>

#include "completion/CommandTree.h"

namespace QorCliEngine {

// How trees of commands are shown. "..." stands for words that are not drawn
// where they may follow.
namespace TreeDrawing {

// The trees as lines of text, with the help of each word. `width` as in Layout.
std::string lines(std::vector<TreeWord> const& trees, std::size_t width);

// The trees as a graph in the language of Graphviz, with the help as tooltips.
// A dashed edge leads to a word that stands elsewhere in the tree.
std::string graph(std::vector<TreeWord> const& trees);

}  // namespace TreeDrawing
}  // namespace QorCliEngine

#endif
