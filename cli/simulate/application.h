#pragma once

#include "core/l10n.h"
#include "engine/link_clock.h"
#include "simulator/machine/machine.h"
#include "viewmodels/app_root.h"
#include "viewmodels/session_token.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace trellivar::cli::simulate {

/// The application on the desk, without a window. Everything happens on the desk's queue.
class Application {
public:
  /// Something was learned or recorded, or else what people are told.
  template <class Result> struct Outcome {
    std::optional<Result> result;
    std::string error;
  };

  /// Profiles and learned keys are kept in `dataFolder`, or nowhere. Throws BadInput for files
  /// there that cannot be read. `machine` must outlive the application.
  Application(desk::Machine& machine, const std::optional<std::filesystem::path>& dataFolder);
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  AppRoot& root() noexcept { return root_; }

  /// What is being learned or recorded for the mode ends.
  void bind(std::string_view mode, int key, const Output& output,
            const std::optional<std::string>& label);

  /// Each ends the one before, which has then come to nothing. The key is one of the mode that the
  /// pad is in.
  void learn(int key, std::function<void(const Outcome<KeySignature>&)> completion);
  void record(int key, std::function<void(const Outcome<Output>&)> completion);
  /// Somebody has not been told yet what came of learning or recording.
  bool isCapturing() const noexcept { return awaited_ > 0; }

private:
  /// On the desk no time passes meanwhile.
  class AtOnce final : public BackgroundQueue {
  public:
    void async(std::function<void()> block) override { block(); }
  };

  AppRoot::Setup setup(const std::optional<std::filesystem::path>& dataFolder);
  std::string mode() const;
  /// Makes room for a new activity on a key of the pad's mode.
  void begin(int key);
  /// A completion for the activity that begins now; `found` gives its result.
  template <class Result, class Found>
  MappingViewModel::Completion
  ending(Found found, std::function<void(const Outcome<Result>&)> completion, L10n::Key nothing);

  desk::Machine& machine_;
  SystemLinkClock clock_;
  AtOnce background_;
  AppRoot root_;
  SessionToken activity_;
  int awaited_ = 0; ///< completions that have not been called
  Subscription deviceChange_;
};

} // namespace trellivar::cli::simulate
