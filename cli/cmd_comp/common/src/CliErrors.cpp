#include "CliErrors.h"

#include <locale>
#include <sstream>

namespace {

template <class... Parts>
std::string joined(Parts const&... parts) {
  std::ostringstream text;
  text.imbue(std::locale::classic());  // counts without grouping
  (text << ... << parts);
  return text.str();
}

}  // namespace

namespace CliErrors {

std::string validateFailTransactionalResources() {
  return "Transaction validation failed!";
}

std::string validateFailInternalError() {
  return "Transaction validation could not complete due to internal error(s)!";
}

std::string validateSuccess() { return "Transaction is valid!"; }

std::string validateNotSupported() { return "Command not found"; }

std::string transactionParticipantsMessages() {
  return "Messages from transaction participants:";
}

std::string failedToGetTransactionParticipantsMessages() {
  return "Failed to fetch messages from transaction participants!";
}

std::string transactionCommitFailed() {
  return "Transaction commit failed and Uncommited changes have been lost";
}

std::string transactionCommitValidationFailed() {
  return "Transaction not committed due to validation errors";
}

std::string modelLookupFailed() {
  return "Failed to read information model data";
}

std::string authorityCheckFailed() {
  return "Failed to perform authority check";
}

std::string unableToExitFromIncompleteObject(char const* object) {
  return joined("Unable to exit from incomplete object ", "(", object, ")");
}

std::string unableToValidateIncompleteObject(char const* object) {
  return joined("Unable to validate incomplete object ", "(", object, ")");
}

std::string unableToCommitIncompleteObject(char const* object) {
  return joined("Unable to commit incomplete object ", "(", object, ")");
}

std::string tooFewArgumentsForAction(char const* action, unsigned count,
                                     char const* extraText) {
  return joined("Too few arguments for action (", action, ") that takes ",
                count, " parameters ", extraText);
}

std::string tooManyArgumentsForAction(char const* action, unsigned count) {
  return joined("Too many arguments for action (", action, ") that takes ",
                count, " parameters");
}

std::string tooManyArgumentsForAction(char const* action, unsigned count,
                                      char const* extraText) {
  return joined(tooManyArgumentsForAction(action, count), " ", extraText);
}

std::string unmatchedDerivedString(char const* name, char const* value,
                                   char const* expectedForm) {
  return joined("Unmatched derived-string (expects ", expectedForm,
                " ): ", name, "=\"", value, "\"");
}

std::string mandatoryAttributeWithoutDefault(char const* attribute) {
  return joined("Mandatory attribute (", attribute,
                ") does not have default value, must navigate to containing "
                "object before reset");
}

std::string invalidArgumentExpectedHavingSpecificValue(
    char const* expectedValue) {
  return joined("Invalid argument", ", expected ", expectedValue);
}

std::string emptyShouldNotBeAssignedAnything(char const* attribute) {
  return joined("Empty (", attribute, ") should not be assigned anything.");
}

std::string emptyValueForDefaultAttribute(char const* attribute,
                                          char const* type) {
  return joined("Attribute value is empty when setting default attribute (",
                attribute, ")\nwhich must be of type (", type, ")");
}

std::string emptyValueForDefaultAttributeHavingValuesFrom(
    char const* attribute, char const* type, char const* valueSource) {
  return joined(emptyValueForDefaultAttribute(attribute, type),
                " having values from ", valueSource);
}

std::string keyAttributeNotFound(char const* className) {
  return joined("Couldn't find key attribute for (", className, ")");
}

std::string cardinalityAtUpperLimit(char const* className) {
  return joined("Cardinality is at upper limit for class (", className,
                "), cannot create object");
}

std::string cardinalityAtLowerLimit(char const* className) {
  return joined("Cardinality is at lower limit for class (", className,
                "), cannot delete object");
}

std::string multiplicityOfAttributeAtMin(char const* attribute) {
  return joined("Multiplicity of the attribute (", attribute,
                ") at minimum limit");
}

std::string multiplicityOfAttributeAtMax(char const* attribute) {
  return joined("Multiplicity of the attribute (", attribute, ") at max limit");
}

std::string invalidDN(char const* distinguishedName) {
  return joined("Invalid distinguished name", " (", distinguishedName, ")");
}

std::string operationNotAllowedOnInvalidDN(char const* distinguishedName) {
  return invalidDN(distinguishedName) + ". Operation not allowed!";
}

std::string unrecognizedObjectTypeForDelete(char const* type) {
  return joined(
      "Delete only works for attribute and object types, type unrecognized "
      "for (",
      type, ")");
}

}  // namespace CliErrors

std::string cardinalityCheckError(char const* className) {
  return joined("Cardinality check error for (", className, ")");
}
