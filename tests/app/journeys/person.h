#pragma once

#include "core/l10n.h"
#include "tests/app/journeys/running_application.h"
#include "tests/app/journeys/stored.h"
#include "tests/app/journeys/surface.h"
#include "tests/app/journeys/waiting.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <QImage>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trellivar {

using Text = L10n::Key;

inline std::string text(Text key) { return std::string(L10n::t(key)); }

/// A person before the display: the window of the application on the left, the desk with the pad on
/// the right. The application is not started yet. Whatever it warns of fails the journey.
class Person {
  Display display_;

public:
  TemporaryFolder folder;
  Surface window{display_, "Trellivar", {0, 0, 976, 656}};
  Surface desk{display_, "Desk", {1000, 0, 420, 960}};

  Person();
  Person(const Person&) = delete;
  Person& operator=(const Person&) = delete;
  ~Person();

  Display& display() { return display_; }

  // The application

  /// Of its command line.
  QStringList arguments() const;
  void start();
  /// Until both permissions are granted, goes no further.
  void goOnToThePad();
  /// The exit code.
  int quit();
  /// Its process ends and begins anew, where one had gone on to the pad before.
  void restart();
  /// The exit code, after it has ended by itself.
  int waitForItsEnd();
  /// In the menu of the status area.
  void chooseFromMenu(std::string_view entry);
  /// As painted, with the mouse out of the way.
  QImage pictureOfTheWindow();
  /// On the pad in the window.
  void select(int key);
  void bind(int key, Text libraryOutput);

  // The desk

  /// The pad, from elsewhere, until the window shows it.
  void bring(std::string_view mode, std::string_view link);
  void connect(std::string_view link) { desk.click(choice(link)); }
  void turnTo(std::string_view mode) { desk.click(choice(mode)); }
  void permit(std::string_view permission, bool isGranted);
  /// With the mouse.
  void hold(int key);
  void letGo() { desk.letGo(); }
  void press(int key);
  /// Now and then again, as people do who are not heard at first.
  void pressUntil(int key, std::string_view what, const std::function<bool()>& condition);
  /// A key of the ordinary keyboard. A modifier stays down until it is clicked again.
  void strike(std::string_view key) { desk.click(choice(key)); }

  // What the computer receives

  /// "c+" for a press and "c-" for a release of what stands in the list.
  std::string heard() const;
  void forget();
  /// So far this.
  void waitToHear(const std::string& expected) const;
  /// This and nothing else, since it was forgotten.
  void hears(const std::string& expected);
  /// This and nothing else, from a press of a pad key.
  void hearsFrom(int key, const std::string& expected);

  // Files

  std::filesystem::path dataFolder() const { return folder / "data"; }
  /// See the functions of these names.
  std::string storedBindings(std::string_view mode) const {
    return trellivar::storedBindings(dataFolder(), mode);
  }
  std::string storedSignatures() const { return trellivar::storedSignatures(dataFolder()); }

private:
  std::optional<RunningApplication> application_;
};

} // namespace trellivar
