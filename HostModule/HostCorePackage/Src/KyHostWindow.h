// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyHostSurface.h"

#include "KyQOpenGLWindow.h"

#include "KySignal.h"

#include <functional>
#include <memory>

class KyHostHelp;
class KyHostLanguagePage;
class KyHostNavigationPage;
class KyHostSettings;
class KyHostStage;
class KyQProxySettingsEditor;
class KyQSettingsDialog;

/// The program's window: shows what the stage shows, and does what the keys of KyHostKeys stand for. Ended by its
/// owner, not by scripts.
class KyHostWindow : public KyQOpenGLWindow, public KyHostSurface, public KyHasSlots {
public:
    /// A window, not on the screen until it is opened; null, and the reason, when there is no GL. Size in
    /// device-independent pixels.
    static std::unique_ptr<KyHostWindow> create(KyHostStage& stage, int width, int height, std::string& error);
    ~KyHostWindow() override;
    /// Closes it only: it belongs to the program.
    void destroy() override { close(); }

    KyHostStage& getStage() const { return mStage; }

    void draw() override;
    bool needsDrawing() const override { return needsRedraw(); }
    int getFrameInterval() const override;
    bool makeCurrent() override;
    bool savePicture(const std::string& path, std::string& error) override;

    /// What openSettings() shows; they outlive the window.
    void setSettings(KyHostSettings& settings);
    /// The dialog of all registered pages; nothing without settings.
    void openSettings();
    /// What openDebugger() does; nothing at first.
    void setDebuggerOpener(std::function<void()> opener) { mDebuggerOpener = std::move(opener); }
    void openDebugger();
    /// What toggleStatistics() does; nothing at first.
    void setStatisticsToggler(std::function<void()> toggler) { mStatisticsToggler = std::move(toggler); }
    void toggleStatistics();
    void toggleHelp() { toggleHelp(*this); }
    /// The help over another window, which stands for this one.
    void toggleHelp(QWindow& over);
    /// False when there was none.
    bool hideHelp();
    /// What leave() ends before the help; false when there was nothing. Nothing at first.
    void setCanceller(std::function<bool()> canceller) { mCanceller = std::move(canceller); }
    /// Gives keys to the next form in the view, or with -1 to the one before.
    void enterForm(int step);
    /// Writes kyhost-DATE-TIME.png into the current folder and prints its name, or why it could not.
    void writePicture();
    /// Takes the keys from a form, or else cancels long work, or else closes the help, or else the window.
    void leave();

protected:
    void onOpened() override { show(); }
    void keyPressEvent(QKeyEvent* event) override;

private:
    explicit KyHostWindow(KyHostStage& stage);

    void showStage();

    KyHostStage& mStage;
    std::unique_ptr<KyHostHelp> mHelp;
    /// The dialog shows the pages, which it gives back when it ends.
    std::unique_ptr<KyHostNavigationPage> mNavigationPage;
    std::unique_ptr<KyHostLanguagePage> mLanguagePage;
    std::unique_ptr<KyQProxySettingsEditor> mProxyPage;
    std::unique_ptr<KyQSettingsDialog> mSettingsDialog;
    std::function<void()> mDebuggerOpener;
    std::function<void()> mStatisticsToggler;
    std::function<bool()> mCanceller;
};
