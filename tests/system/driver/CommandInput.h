#pragma once

#include <QByteArray>

#include <functional>

class QObject;

// Standard input and output of a program that has an event loop.
namespace windowdriver {

// Calls the handler, from the event loop, with what comes on standard input; with nothing when no more will come. The
// context must live as long as the program.
void listenToInput(QObject& context, std::function<void(const QByteArray&)> handler);

// False when nobody listens.
bool writeToOutput(const QByteArray& bytes);

} // namespace windowdriver
