// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "Session.h"

#include <CLI/CLI.hpp>

/// Each verb adds its subcommand; the subcommand's callback does the work and answers by exceptions of Session.h.
void addShow(CLI::App& app, Session& session);
void addInfo(CLI::App& app, Session& session);
void addList(CLI::App& app, Session& session);
void addCheck(CLI::App& app, Session& session);
void addGet(CLI::App& app, Session& session);
void addKeys(CLI::App& app, Session& session);
void addDict(CLI::App& app, Session& session);
void addDoc(CLI::App& app, Session& session);
void addLint(CLI::App& app, Session& session);
void addFiles(CLI::App& app, Session& session);
void addExtract(CLI::App& app, Session& session);
void addAdd(CLI::App& app, Session& session);
void addPack(CLI::App& app, Session& session);
void addVerify(CLI::App& app, Session& session);
void addConvert(CLI::App& app, Session& session);
void addRepair(CLI::App& app, Session& session);
void addEmu(CLI::App& app, Session& session);
void addLabels(CLI::App& app, Session& session);
void addMda(CLI::App& app, Session& session);
void addHdf2dsa(CLI::App& app, Session& session);
void addFixedKar(CLI::App& app, Session& session);
