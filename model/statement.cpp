#include "model/statement.h"

#include "model/statement_table.h"

namespace zentro {

namespace {

const Statement* FindRead(Token token, Reading reading) {
    const Statement* statement = FindStatement(token);
    return statement != nullptr && statement->reading == reading ? statement : nullptr;
}

}  // namespace

const Statement* FindStatement(Token token) {
    return kStatementByToken[static_cast<std::size_t>(token)];
}

const Statement* FindValueStatement(Token token) {
    return FindRead(token, Reading::Values);
}

const Statement* FindFunction(Token token) {
    return FindRead(token, Reading::Function);
}

}  // namespace zentro
