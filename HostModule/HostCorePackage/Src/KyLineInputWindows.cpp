// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLineInput.h"

#include <QMetaObject>
#include <QObject>

#include <cstdio>
#include <iostream>
#include <thread>
#include <utility>

#include <io.h>

/// The console edits lines and keeps their history itself; a thread waits for them, for standard input is nothing that
/// the event loop can wait on.
struct KyLineInput::Native {
    explicit Native(Handlers inputHandlers)
        : handlers(std::move(inputHandlers))
        , context(std::make_shared<QObject>())
        , isTerminal(_isatty(_fileno(stdin)) && _isatty(_fileno(stdout))) {}

    void start();
    void showPrompt() const {
        if (isTerminal)
            std::cout << prompt << std::flush;
    }

    Handlers handlers;
    /// What is still on its way to an input that has ended is dropped with it.
    std::shared_ptr<QObject> context;
    bool isTerminal;
    bool wantsMore = true;
    std::string prompt;
};

void KyLineInput::Native::start() {
    const auto post = [](const std::weak_ptr<QObject>& receiver, std::function<void()> call) {
        if (const auto object = receiver.lock())
            QMetaObject::invokeMethod(object.get(), std::move(call), Qt::QueuedConnection);
    };
    std::thread([this, post, receiver = std::weak_ptr<QObject>(context)] {
        for (std::string line; std::getline(std::cin, line);)
            post(receiver, [this, line] {
                if (wantsMore && (wantsMore = handlers.line(line)))
                    showPrompt();
            });
        post(receiver, [this] {
            if (wantsMore)
                handlers.end();
        });
    }).detach();
}

KyLineInput::KyLineInput(Handlers handlers)
    : mNative(std::make_unique<Native>(std::move(handlers))) {
    mNative->start();
}

KyLineInput::~KyLineInput() = default;

bool KyLineInput::isTerminal() const {
    return mNative->isTerminal;
}

void KyLineInput::setPrompt(const std::string& prompt) {
    const bool isFirst = mNative->prompt.empty();
    mNative->prompt = prompt;
    if (isFirst)
        mNative->showPrompt();
}

void KyLineInput::keepHistory(const std::string&) {}

void KyLineInput::addHistory(const std::string&) {}

void KyLineInput::writeAround(const std::function<void()>& write) {
    write();
}

void KyLineInput::flushOutput() {
    std::fflush(stdout);
}
