#pragma once
// The wall at the edge of the host's callbacks into the bar (the reactors): nothing the bar does
// crosses into the host, except the automation failures that are meant to reach it.

#include "ports/com_error.h"

// Runs `body`; every failure ends here.
template <class Body>
void HostCallback(Body&& body) noexcept {
    try {
        body();
    } catch (...) {
    }
}

// Runs `body`; an automation failure goes on to the host's reactor dispatch on purpose (the
// system has always let it, and the modified mark stays as it was); any other failure ends here.
template <class Body>
void HostCallbackPassingComErrors(Body&& body) {
    try {
        body();
    } catch (const ComError&) {
        throw;
    } catch (...) {
    }
}
