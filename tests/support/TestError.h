#pragma once

#include <QString>
#include <stdexcept>

namespace tarvessa::test {

/// The test environment itself failed (server, schema, socket): not a failed check of the program.
class TestError : public std::runtime_error {
  public:
    explicit TestError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

} // namespace tarvessa::test
