#include <gtest/gtest.h>

#include <functional>

#include "ACKeyword.h"
#include "AutoCompleteTree.h"
#include "Error.h"
#include "RecordingCommand.h"
#include "Refusal.h"
#include "TestNode.h"

namespace QorCliUtilities {
namespace {

using QorUnit::Calls;
using QorUnit::expectError;
using QorUnit::RecordingCommand;
using QorUnit::TestNode;
using QorUnit::TestNodeSetup;

// The tree below a node: "x(y(z w))".
std::string shape(AutoCompleteNode const& node) {
  std::string text = node.keyword();
  if (node.children().empty()) return text;
  text += '(';
  for (AutoCompleteNode const* child : node.children()) {
    if (child != node.children().front()) text += ' ';
    text += shape(*child);
  }
  return text + ')';
}

class Building : public ::testing::Test {
 protected:
  TestNode* node(TestNodeSetup setup) {
    return new TestNode(std::move(setup), calls);
  }

  unsigned add(std::vector<char const*> const& keywords) {
    std::vector<AutoCompleteNode*> path;
    for (char const* keyword : keywords) path.push_back(node({keyword}));
    return tree.addPathToTree(path);
  }

  AutoCompleteNode& first() { return *tree.getRoot()->children().front(); }

  Calls calls;
  RecordingCommand command{"one"};
  RecordingCommand other{"two"};
  AutoCompleteTree tree;
};

void expectOutOfBound(std::function<void()> const& call) {
  expectError("Can't add path to the tree, index out of bound.", call);
}

TEST_F(Building, IsReadyWhileItHasARoot) {
  EXPECT_FALSE(tree.readyForUse());
  EXPECT_EQ(tree.getRoot(), nullptr);
  EXPECT_EQ(add({"x"}), 0U);
  EXPECT_TRUE(tree.readyForUse());
  EXPECT_NE(tree.getRoot(), nullptr);
  tree.deleteTree();
  EXPECT_FALSE(tree.readyForUse());
  EXPECT_EQ(tree.getRoot(), nullptr);
  tree.deleteTree();
  EXPECT_EQ(add({"y"}), 0U);
  EXPECT_EQ(shape(*tree.getRoot()), "Root(y)");
}

TEST_F(Building, TheRootHasNoCommand) {
  add({"x"});
  EXPECT_TRUE(tree.getRoot()->isRoot());
  EXPECT_FALSE(tree.getRoot()->isExecutable());
}

TEST_F(Building, PathsWithACommonPrefixShareNodes) {
  EXPECT_EQ(add({"x", "y", "z"}), 0U);
  AutoCompleteNode* const shared = &first();
  EXPECT_EQ(add({"x", "y", "w"}), 0U);
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(y(z w)))");
  EXPECT_EQ(&first(), shared);
  EXPECT_EQ(calls, (Calls{"delete x", "delete y"}));
}

TEST_F(Building, BranchesAreAppendedWherePathsDiverge) {
  add({"x", "y"});
  add({"b"});
  add({"a", "y"});
  add({"x", "c", "d"});
  add({"x", "y", "e"});
  add({"x"});
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(y(e) c(d)) b a(y))");
}

TEST_F(Building, LetterCaseDistinguishesNodes) {
  add({"Filter"});
  add({"filter"});
  EXPECT_EQ(shape(*tree.getRoot()), "Root(Filter filter)");
}

TEST_F(Building, AnEmptyPathNeedsARoot) {
  expectOutOfBound([&] { tree.addPathToTree({}); });
  EXPECT_TRUE(tree.readyForUse());
  EXPECT_EQ(shape(*tree.getRoot()), "Root");
  EXPECT_EQ(tree.addPathToTree({}), 0U);
  add({"x"});
  EXPECT_EQ(tree.addPathToTree({}), 0U);
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x)");
}

TEST_F(Building, LinksASubPathUnchanged) {
  add({"x"});
  std::vector<AutoCompleteNode*> const path{
      node({"ignored"}), node({"a", {7}, true, true}), node({"b"})};
  EXPECT_EQ(tree.addSubPathToTree(path, 1, &first()), 0U);
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(a(b)))");
  EXPECT_TRUE(path[1]->potentialTerminalNode());
  EXPECT_TRUE(path[1]->isHidden());
  EXPECT_EQ(calls, Calls{});
  for (unsigned index : {3U, 4U}) {
    expectOutOfBound(
        [&] { tree.addSubPathToTree(path, index, tree.getRoot()); });
  }
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(a(b)))");
  delete path[0];
}

TEST_F(Building, FindsTheFirstChildWithTheKeyword) {
  add({"x"});
  TestNode searched({"x"}, calls);
  TestNode unknown({"X"}, calls);
  EXPECT_EQ(tree.findChildNode(nullptr, searched), nullptr);
  EXPECT_EQ(tree.findChildNode(&first(), searched), nullptr);
  EXPECT_EQ(tree.findChildNode(tree.getRoot(), searched), &first());
  EXPECT_EQ(tree.findChildNode(tree.getRoot(), unknown), nullptr);
  tree.addSubPathToTree({node({"x"})}, 0, tree.getRoot());
  EXPECT_EQ(tree.findChildNode(tree.getRoot(), searched), &first());
}

TEST_F(Building, NodesOfAnyClassAreComparedByKeyword) {
  tree.addPathToTree(
      {new ACKeyword("x", "", {1}, false, false, QorCliCompletionToken_1T{0},
                     false, false, false, false, false)});
  add({"x", "y"});
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(y))");
  EXPECT_NE(dynamic_cast<ACKeyword*>(&first()), nullptr);
}

TEST_F(Building, ANodeIsHiddenOnlyIfEveryPathHidesIt) {
  struct {
    bool before;
    bool added;
    bool after;
  } const rows[] = {{true, false, false},
                    {false, true, false},
                    {true, true, true},
                    {false, false, false}};
  for (auto const& row : rows) {
    tree.deleteTree();
    tree.addPathToTree({node({"x", {}, false, row.before})});
    tree.addPathToTree({node({"x", {}, false, row.added})});
    EXPECT_EQ(first().isHidden(), row.after);
  }
}

TEST_F(Building, ANodeIsTerminalIfAnyPathEndsThere) {
  struct {
    bool before;
    bool added;
    bool after;
  } const rows[] = {{true, false, true},
                    {false, true, true},
                    {true, true, true},
                    {false, false, false}};
  for (auto const& row : rows) {
    tree.deleteTree();
    tree.addPathToTree({node({"x", {}, row.before})});
    tree.addPathToTree({node({"x", {}, row.added})});
    EXPECT_EQ(first().potentialTerminalNode(), row.after);
  }
}

TEST_F(Building, TheStricterValidationWins) {
  struct {
    int before;
    int added;
    int after;
  } const rows[] = {{0, 3, 3}, {3, 0, 3}, {3, 3, 3}, {-1, 0, 0}, {0, -1, 0}};
  for (auto const& row : rows) {
    tree.deleteTree();
    for (int value : {row.before, row.added}) {
      TestNode* const added = node({"x"});
      added->setValidationType(Validation_Type{value});
      tree.addPathToTree({added});
    }
    EXPECT_EQ(first().validationType(), Validation_Type{row.after});
  }
}

TEST_F(Building, ModesAreMerged) {
  tree.addPathToTree({node({"x", {1}})});
  tree.addPathToTree({node({"x", {2}})});
  for (unsigned mode = 0; mode < 4; ++mode) {
    EXPECT_EQ(first().isValidForMode(QorCliModeEnum_1T{mode}),
              mode == 1 || mode == 2);
  }
}

// A command node with the keyword of another node, and every flag inverted.
struct NamedCommandNode : AutoCompleteNode {
  NamedCommandNode(AbstractCommand* ends, unsigned mode, Calls& calls)
      : AutoCompleteNode(ends), calls_(calls) {
    addState(AutoCompleteNode({mode}, VALIDATION_NONE, false, false));
  }
  ~NamedCommandNode() override { calls_.push_back("delete command node"); }
  std::string keyword() const override { return "x"; }

 private:
  Calls& calls_;
};

TEST_F(Building, AnExecutableNodeMergesOnlyItsModes) {
  tree.addPathToTree({node({"x", {1}, false, true})});
  auto* const executable = new NamedCommandNode(&command, 2, calls);
  executable->setPotentialTerminalNode(true);
  executable->setValidationType(VALIDATION_KEYWORD);
  EXPECT_EQ(tree.addPathToTree({executable}), 0U);
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x)");
  EXPECT_TRUE(first().isHidden());
  EXPECT_FALSE(first().potentialTerminalNode());
  EXPECT_EQ(first().validationType(), VALIDATION_NONE);
  EXPECT_FALSE(first().isExecutable());
  EXPECT_TRUE(first().isValidForMode(QorCliModeEnum_1T{1}));
  EXPECT_TRUE(first().isValidForMode(QorCliModeEnum_1T{2}));
  EXPECT_EQ(calls, Calls{"delete command node"});
}

TEST_F(Building, TheFirstOfTwoExecutableNodesKeepsItsCommand) {
  tree.addPathToTree({new NamedCommandNode(&command, 1, calls)});
  tree.addPathToTree({new NamedCommandNode(&other, 2, calls)});
  EXPECT_EQ(first().toString(), "one command");
  EXPECT_TRUE(first().isValidForMode(QorCliModeEnum_1T{2}));
  EXPECT_EQ(calls, Calls{"delete command node"});
}

TEST_F(Building, AnExecutableNodeReceivesTheFlagsOfAPlainOne) {
  tree.addPathToTree({new NamedCommandNode(&command, 1, calls)});
  tree.addPathToTree({node({"x", {}, true})});
  EXPECT_TRUE(first().potentialTerminalNode());
  EXPECT_EQ(first().toString(), "one command");
}

TEST_F(Building, DeletesEveryNodeOnceAfterItsChildren) {
  add({"x", "y", "z"});
  add({"x", "w"});
  tree.addPathToTree({new NamedCommandNode(&command, 1, calls)});
  calls.clear();
  tree.deleteTree();
  EXPECT_EQ(calls, (Calls{"delete z", "delete y", "delete w", "delete x"}));
}

// Writes down how many children its destructor sees.
class ParentNode : public TestNode {
 public:
  ParentNode(char const* keyword, std::vector<std::size_t>& seen, Calls& calls)
      : TestNode({keyword}, calls), seen_(seen) {}
  ~ParentNode() override { seen_.push_back(children().size()); }

 private:
  std::vector<std::size_t>& seen_;
};

TEST_F(Building, ADestructorSeesNoDeletedChildren) {
  std::vector<std::size_t> seen;
  tree.addPathToTree({new ParentNode("x", seen, calls), node({"y"})});
  tree.deleteTree();
  EXPECT_EQ(seen, std::vector<std::size_t>{0});
}

TEST_F(Building, DeletesNodesOfEveryClass) {
  add({"a", "b"});
  tree.addPathToTree({new NamedCommandNode(&command, 1, calls)});
  tree.deleteTree();
  EXPECT_EQ(calls, (Calls{"delete b", "delete a", "delete command node"}));
}

TEST_F(Building, ADestroyedTreeDeletesItsNodes) {
  {
    AutoCompleteTree shortLived;
    shortLived.addPathToTree({node({"x"}), node({"y"})});
  }
  EXPECT_EQ(calls, (Calls{"delete y", "delete x"}));
}

TEST_F(Building, DeletesASubtreeAndSkipsNull) {
  TestNode* const top = node({"top"});
  top->addChild(nullptr);
  top->addChild(node({"child"}));
  tree.deleteSearch(top);
  tree.deleteSearch(nullptr);
  EXPECT_EQ(calls, (Calls{"delete child", "delete top"}));
}

// A node whose keyword throws.
struct Unnamable : TestNode {
  using TestNode::TestNode;
  std::string keyword() const override { throw Error("no keyword", 0); }
};

TEST_F(Building, OwnsTheNodesOfAPathItCannotMerge) {
  add({"x", "z"});
  EXPECT_THROW(tree.addPathToTree(
                   {node({"x"}), new Unnamable({"u"}, calls), node({"y"})}),
               Error);
  EXPECT_EQ(calls, (Calls{"delete x", "delete u", "delete y"}));
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(z))");
}

TEST_F(Building, TakesUniquePointers) {
  auto const owned = [&](char const* keyword) {
    return std::make_unique<TestNode>(TestNodeSetup{keyword}, calls);
  };
  EXPECT_EQ(tree.addPathToTree(owned("x"), owned("y"),
                               std::make_unique<AutoCompleteNode>(&command)),
            0U);
  EXPECT_EQ(tree.addPathToTree(owned("x"), owned("z")), 0U);
  EXPECT_EQ(tree.addPathToTree(owned("w")), 0U);
  EXPECT_EQ(shape(*tree.getRoot()), "Root(x(y(one command) z) w)");
  EXPECT_EQ(calls, Calls{"delete x"});
  tree.deleteTree();
  EXPECT_EQ(calls.size(), 5U);
}

}  // namespace
}  // namespace QorCliUtilities
