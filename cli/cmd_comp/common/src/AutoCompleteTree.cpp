#include "AutoCompleteTree.h"

#include "Error.h"
#include "OperationTrace.h"

namespace QorCliUtilities {
namespace {

// Owns the nodes of a path that are not linked yet, and deletes them when the
// merge throws.
class PathOwner {
 public:
  PathOwner(std::vector<AutoCompleteNode*> const& path, std::size_t first)
      : path_(path), next_(first) {}
  ~PathOwner() {
    while (next_ < path_.size()) delete path_[next_++];
  }
  PathOwner(PathOwner const&) = delete;
  PathOwner& operator=(PathOwner const&) = delete;

  void linked() { ++next_; }
  void deleteNext() { delete path_[next_++]; }
  void handOver() { next_ = path_.size(); }

 private:
  std::vector<AutoCompleteNode*> const& path_;
  std::size_t next_;
};

void mergeFlags(AutoCompleteNode& existing, AutoCompleteNode const& added) {
  if (added.isExecutable()) return;
  if (added.potentialTerminalNode()) existing.setPotentialTerminalNode(true);
  if (!added.isHidden()) existing.unsetHidden();
  if (added.validationType() > existing.validationType()) {
    existing.setValidationType(added.validationType());
  }
}

}  // namespace

AutoCompleteTree::~AutoCompleteTree() { deleteTree(); }

bool AutoCompleteTree::readyForUse() const {
  return OperationTrace().exitWith(root_ != nullptr);
}

AutoCompleteNode* AutoCompleteTree::getRoot() const {
  return OperationTrace().exitWith(root_);
}

unsigned AutoCompleteTree::addPathToTree(
    std::vector<AutoCompleteNode*> const& path) {
  PathOwner owner(path, 0);
  OperationTrace const trace;
  if (root_ == nullptr) {
    root_ = new AutoCompleteNode(nullptr);
    owner.handOver();
    return trace.exitWith(addSubPathToTree(path, 0, root_));
  }
  AutoCompleteNode* current = root_;
  for (unsigned i = 0; i < path.size(); ++i) {
    AutoCompleteNode* const existing = findChildNode(current, *path[i]);
    if (existing == nullptr) {
      owner.handOver();
      return trace.exitWith(addSubPathToTree(path, i, current));
    }
    mergeFlags(*existing, *path[i]);
    existing->addState(*path[i]);
    owner.deleteNext();
    current = existing;
  }
  return trace.exitWith(0U);
}

unsigned AutoCompleteTree::addSubPathToTree(
    std::vector<AutoCompleteNode*> const& path, unsigned index,
    AutoCompleteNode* parent) {
  PathOwner owner(path, index);
  OperationTrace const trace;
  if (index >= path.size()) {
    throw Error("Can't add path to the tree, index out of bound.", 0);
  }
  for (std::size_t i = index; i < path.size(); ++i) {
    parent->addChild(path[i]);
    owner.linked();
    parent = path[i];
  }
  return trace.exitWith(0U);
}

AutoCompleteNode* AutoCompleteTree::findChildNode(
    AutoCompleteNode* parent, AutoCompleteNode& node) const {
  OperationTrace const trace;
  AutoCompleteNode* found = nullptr;
  if (parent != nullptr && !parent->children().empty()) {
    std::string const keyword = node.keyword();
    for (AutoCompleteNode* child : parent->children()) {
      if (child->keyword() != keyword) continue;
      found = child;
      break;
    }
  }
  return trace.exitWith(found);
}

void AutoCompleteTree::deleteTree() {
  OperationTrace const trace;
  deleteSearch(root_);
  root_ = nullptr;
  trace.exit();
}

// Recurses as deep as the tree: the words of the longest command.
void AutoCompleteTree::deleteSearch(AutoCompleteNode* node) {
  if (node == nullptr) return;
  OperationTrace const trace;
  for (std::size_t i = 0; i < node->children().size(); ++i) {
    deleteSearch(node->children()[i]);
  }
  node->clearChildren();
  delete node;
  trace.exit();
}

}  // namespace QorCliUtilities
