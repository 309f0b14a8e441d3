// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHostProgram.h"

int main(int argc, char** argv) {
    return KyHostProgram::run(argc, argv);
}
