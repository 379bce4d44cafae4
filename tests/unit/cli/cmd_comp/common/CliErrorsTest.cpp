#include <gtest/gtest.h>

#include <locale>
#include <string>

#include "CliErrors.h"

namespace {

using namespace CliErrors;

TEST(CliErrors, EveryMessageHasItsText) {
  struct {
    std::string message;
    char const* text;
  } const rows[] = {
      {validateFailTransactionalResources(), "Transaction validation failed!"},
      {validateFailInternalError(),
       "Transaction validation could not complete due to internal error(s)!"},
      {validateSuccess(), "Transaction is valid!"},
      {validateNotSupported(), "Command not found"},
      {transactionParticipantsMessages(),
       "Messages from transaction participants:"},
      {failedToGetTransactionParticipantsMessages(),
       "Failed to fetch messages from transaction participants!"},
      {transactionCommitFailed(),
       "Transaction commit failed and Uncommited changes have been lost"},
      {transactionCommitValidationFailed(),
       "Transaction not committed due to validation errors"},
      {modelLookupFailed(), "Failed to read information model data"},
      {authorityCheckFailed(), "Failed to perform authority check"},
      {unableToExitFromIncompleteObject("Cell=1"),
       "Unable to exit from incomplete object (Cell=1)"},
      {unableToValidateIncompleteObject("Cell=1"),
       "Unable to validate incomplete object (Cell=1)"},
      {unableToCommitIncompleteObject("Cell=1"),
       "Unable to commit incomplete object (Cell=1)"},
      {tooFewArgumentsForAction("set", 2, "x"),
       "Too few arguments for action (set) that takes 2 parameters x"},
      {tooManyArgumentsForAction("set", 2),
       "Too many arguments for action (set) that takes 2 parameters"},
      {tooManyArgumentsForAction("set", 2, "x"),
       "Too many arguments for action (set) that takes 2 parameters x"},
      {unmatchedDerivedString("name", "value", "form"),
       "Unmatched derived-string (expects form ): name=\"value\""},
      {mandatoryAttributeWithoutDefault("id"),
       "Mandatory attribute (id) does not have default value, must navigate "
       "to containing object before reset"},
      {invalidArgumentExpectedHavingSpecificValue("on"),
       "Invalid argument, expected on"},
      {cardinalityAtUpperLimit("Cell"),
       "Cardinality is at upper limit for class (Cell), cannot create object"},
      {cardinalityAtLowerLimit("Cell"),
       "Cardinality is at lower limit for class (Cell), cannot delete object"},
      {::cardinalityCheckError("Cell"), "Cardinality check error for (Cell)"},
      {emptyShouldNotBeAssignedAnything("id"),
       "Empty (id) should not be assigned anything."},
      {emptyValueForDefaultAttribute("id", "string"),
       "Attribute value is empty when setting default attribute (id)\n"
       "which must be of type (string)"},
      {emptyValueForDefaultAttributeHavingValuesFrom("id", "string", "a..z"),
       "Attribute value is empty when setting default attribute (id)\n"
       "which must be of type (string) having values from a..z"},
      {keyAttributeNotFound("Cell"), "Couldn't find key attribute for (Cell)"},
      {multiplicityOfAttributeAtMin("id"),
       "Multiplicity of the attribute (id) at minimum limit"},
      {multiplicityOfAttributeAtMax("id"),
       "Multiplicity of the attribute (id) at max limit"},
      {invalidDN("a=1"), "Invalid distinguished name (a=1)"},
      {operationNotAllowedOnInvalidDN("a=1"),
       "Invalid distinguished name (a=1). Operation not allowed!"},
      {unrecognizedObjectTypeForDelete("Cell"),
       "Delete only works for attribute and object types, type unrecognized "
       "for (Cell)"},
  };
  for (auto const& row : rows) EXPECT_EQ(row.message, row.text);
}

TEST(CliErrors, CountsAreUnsignedDecimals) {
  EXPECT_EQ(tooManyArgumentsForAction("a", 4294967295U),
            "Too many arguments for action (a) that takes 4294967295 "
            "parameters");
  EXPECT_EQ(tooFewArgumentsForAction("a", 0, ""),
            "Too few arguments for action (a) that takes 0 parameters ");
}

struct Grouping : std::numpunct<char> {
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(CliErrors, CountsAreNotGroupedInAnyLocale) {
  std::locale const before =
      std::locale::global(std::locale(std::locale(), new Grouping));
  std::string const message = tooManyArgumentsForAction("a", 1000000);
  std::locale::global(before);
  EXPECT_EQ(message,
            "Too many arguments for action (a) that takes 1000000 parameters");
}

TEST(CliErrors, ArgumentsAreInsertedVerbatim) {
  EXPECT_EQ(invalidDN("%s \"\n"), "Invalid distinguished name (%s \"\n)");
  EXPECT_EQ(invalidDN(""), "Invalid distinguished name ()");
}

}  // namespace
