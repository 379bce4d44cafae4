#ifndef QOR_CLI_ERRORS_H
#define QOR_CLI_ERRORS_H

#include <string>

// The catalogue of messages that CLI commands show to the operator.
//
// Each function returns a complete text without a line feed. Text arguments are
// NUL-terminated, must not be null and are inserted verbatim; counts are
// decimal. Stateless; callable from any thread. The spelling and the spacing of
// the texts are part of the interface.
namespace CliErrors {

// Transactions.
std::string validateFailTransactionalResources();
std::string validateFailInternalError();
std::string validateSuccess();
std::string validateNotSupported();
std::string transactionParticipantsMessages();
std::string failedToGetTransactionParticipantsMessages();
std::string transactionCommitFailed();
std::string transactionCommitValidationFailed();
std::string modelLookupFailed();
std::string authorityCheckFailed();

// Objects that lack mandatory attributes.
std::string unableToExitFromIncompleteObject(char const* object);
std::string unableToValidateIncompleteObject(char const* object);
std::string unableToCommitIncompleteObject(char const* object);

// Arguments of actions. `count` is the number of parameters the action takes.
std::string tooFewArgumentsForAction(char const* action, unsigned count,
                                     char const* extraText);
std::string tooManyArgumentsForAction(char const* action, unsigned count);
std::string tooManyArgumentsForAction(char const* action, unsigned count,
                                      char const* extraText);

// Attribute values.
std::string unmatchedDerivedString(char const* name, char const* value,
                                   char const* expectedForm);
std::string mandatoryAttributeWithoutDefault(char const* attribute);
std::string invalidArgumentExpectedHavingSpecificValue(
    char const* expectedValue);
std::string emptyShouldNotBeAssignedAnything(char const* attribute);
std::string emptyValueForDefaultAttribute(char const* attribute,
                                          char const* type);
std::string emptyValueForDefaultAttributeHavingValuesFrom(
    char const* attribute, char const* type, char const* valueSource);
std::string keyAttributeNotFound(char const* className);

// Cardinality and multiplicity.
std::string cardinalityAtUpperLimit(char const* className);
std::string cardinalityAtLowerLimit(char const* className);
std::string multiplicityOfAttributeAtMin(char const* attribute);
std::string multiplicityOfAttributeAtMax(char const* attribute);

// Distinguished names and object types.
std::string invalidDN(char const* distinguishedName);
std::string operationNotAllowedOnInvalidDN(char const* distinguishedName);
std::string unrecognizedObjectTypeForDelete(char const* type);

}  // namespace CliErrors

// Like the functions of CliErrors, but in the global namespace.
std::string cardinalityCheckError(char const* className);

#endif
