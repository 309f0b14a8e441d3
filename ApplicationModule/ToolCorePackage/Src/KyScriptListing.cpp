// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptListing.h"

#include "KyScriptDebugger.h"

#include <algorithm>
#include <iterator>

namespace {

/// Variables of the first page, which tells how long the others may become.
constexpr int cFirstPage = 1000;

int getSize(const KyScriptVariable& variable) {
    return static_cast<int>(variable.name.size() + variable.value.size());
}

/// How many more may fit. Each page goes through the whole table, so there are few.
int guessPage(std::size_t nbDone, int size, int nbLeft) {
    if (nbDone == 0)
        return std::min(nbLeft, cFirstPage);
    const int average = std::max(size / static_cast<int>(nbDone), 1);
    return std::min(nbLeft, std::max((KyScriptListing::cMaxSize - size) / average, cFirstPage));
}

} // namespace

/// Long values take long to make, so not all are made before it is known how many fit.
KyScriptListing KyScriptListing::make(KyScriptDebugger& debugger, int reference, int first, int count) {
    KyScriptListing listing;
    count = count > 0 ? std::min(count, cMaxVariables) : cMaxVariables;
    first = std::max(first, 0);
    int size = 0;
    for (int done = 0, page = 0; done < count; done += page) {
        page = guessPage(listing.variables.size(), size, count - done);
        auto variables = debugger.getVariables(reference, first + done, page);
        const bool isLast = static_cast<int>(variables.size()) < page;
        const auto isBeyond = [&size](const KyScriptVariable& variable) {
            return (size += getSize(variable)) > cMaxSize;
        };
        const auto end = std::ranges::find_if(variables, isBeyond);
        listing.isTooLarge = end != variables.end();
        std::move(variables.begin(), end, std::back_inserter(listing.variables));
        if (isLast || listing.isTooLarge)
            break;
    }
    return listing;
}
