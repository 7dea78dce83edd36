#pragma once

#include "base/Operation.h"
#include "ui/ErrorReport.h"

#include <QObject>
#include <QWidget>

#include <utility>

namespace tarvessa {

/// Runs a handler of a form as an operation of the operator. A RuntimeError ends the handler and is shown as
/// the error report; the program stays usable. True when the handler ran to its end.
template <typename Body>
bool guarded(QWidget* form, Body&& body) {
    try {
        const Operation operation;
        std::forward<Body>(body)();
        return true;
    } catch (const RuntimeError& error) {
        showErrorReport(form, error);
        return false;
    }
}

/// Connects a signal to a handler of `form` through `guarded`. Every handler of a form is connected this way.
template <typename Sender, typename Signal, typename Handler>
void onSignal(Sender* sender, Signal signal, QWidget* form, Handler handler) {
    QObject::connect(sender, signal, form, [form, handler](auto&&... arguments) {
        guarded(form, [&] { handler(std::forward<decltype(arguments)>(arguments)...); });
    });
}

} // namespace tarvessa
