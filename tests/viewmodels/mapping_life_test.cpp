#include "tests/support/generators.h"
#include "tests/viewmodels/mapping_fixture.h"

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <ostream>

namespace trellivar {
namespace {

using Mappings = std::vector<KeyMapping>;

/// Something that people do to a profile.
struct Edit {
  enum class Kind { assign, rename, reapply } kind;
  int keyId;
  std::string text; ///< the key that is typed, or the label; at least one letter
};

void showValue(const Edit& edit, std::ostream& out) {
  out << static_cast<int>(edit.kind) << ' ' << edit.keyId << ' ' << edit.text;
}

rc::Gen<Edit> anyEdit() {
  return rc::gen::construct<Edit>(
      rc::gen::element(Edit::Kind::assign, Edit::Kind::rename, Edit::Kind::reapply),
      generate::range(1, 4), rc::gen::element<std::string>("a", "b", "c"));
}

/// What a profile should hold, the plain way: bindings in the order of their last edit. Answers
/// whether that was an edit.
bool perform(const Edit& edit, Mappings& mappings) {
  const auto old = std::ranges::find(mappings, edit.keyId, &KeyMapping::fromKeyId);
  const bool isBound = old != mappings.end();
  const bool isLearned = edit.keyId <= 2;
  if (edit.kind == Edit::Kind::rename && isBound) {
    old->label = edit.text;
    return true;
  }
  if (edit.kind != Edit::Kind::assign || !isLearned) return false;
  const KeyMapping mapping{edit.keyId, typing(edit.text), isBound ? old->label : std::nullopt};
  if (isBound) mappings.erase(old);
  mappings.push_back(mapping);
  return true;
}

class MappingLife : public MappingTest {};

RC_GTEST_FIXTURE_PROP(MappingLife, editsKeepOneBindingAKeyInTheOrderOfTheLastEdits, ()) {
  make();
  Mappings expected = setup_.profile.mappings;
  for (const Edit& edit : *generate::upTo(12, anyEdit())) {
    switch (edit.kind) {
    case Edit::Kind::assign:
      model_->select(edit.keyId);
      model_->assign(typing(edit.text));
      break;
    case Edit::Kind::rename:
      model_->rename(edit.keyId, " " + edit.text);
      break;
    case Edit::Kind::reapply:
      model_->reapply();
    }
    const std::vector<Profile> edits = std::exchange(edited_, {});
    const bool isEdit = perform(edit, expected);
    RC_ASSERT(mappings() == expected);
    RC_ASSERT(edits == std::vector<Profile>(isEdit ? 1 : 0, *model_->profile()));
  }
  model_->reapply();
  RC_ASSERT(engine_->applied.back() ==
            (std::vector{MappingSet{unknownPad(), *model_->profile(), false}}));
}

enum class Step {
  learn,
  record,
  select,
  deselect,
  switchProfile,
  switchDevice,
  end,
  pass,
  passLong,
  letGo,
  hold,
  silence,
  padKey,
  shortcut,
  refuse,
  accept,
};

void showValue(Step step, std::ostream& out) { out << static_cast<int>(step); }

/// One life of a model, with everything in an order that nobody would think of.
class MappingActivities : public MappingTest {
protected:
  void perform(Step step) {
    switch (step) {
    case Step::learn:
      ++started_;
      return model_->learnKey(counted());
    case Step::record:
      ++started_;
      return model_->record(counted());
    case Step::select:
      return model_->select(1);
    case Step::deselect:
      return model_->select(std::nullopt);
    case Step::switchProfile:
      return model_->switchProfile(setup_.profile);
    case Step::switchDevice:
      return model_->switchDevice({"Other pad", ++otherId_, 4, unknownPad().layout});
    case Step::end:
      return model_->endActiveCapture();
    case Step::pass:
      return queue_.advance(Seconds(0.125));
    case Step::passLong:
      return queue_.advance(Seconds(10));
    case Step::letGo:
      isReleased_ = true;
      return;
    case Step::hold:
      isReleased_ = false;
      return;
    case Step::silence:
      return finish({});
    case Step::padKey:
      return finish(tap(model_->device()->identity(), "q"));
    case Step::shortcut:
      return finish(tap(keyboard, "q"));
    case Step::refuse:
      engine_->applyError = EngineError::lintFailed("no sense");
      return;
    case Step::accept:
      engine_->applyError = std::nullopt;
      return;
    }
  }
  void finish(const std::vector<DeviceKeyEvent>& events) {
    if (!capturer_->running.empty()) capturer_->finish(events);
  }
  void runOut() {
    do {
      queue_.advance(Seconds(60));
      while (!capturer_->running.empty())
        capturer_->finish();
    } while (queue_.pendingCount() > 0);
  }
  /// Whether pads were exempted and remapped again strictly in turn.
  bool alternates() const {
    for (std::size_t i = 0; i < engine_->ignores.size(); ++i) {
      if (engine_->ignores[i][0] != (i % 2 == 0 ? '+' : '-')) return false;
    }
    return true;
  }

  int started_ = 0;
  int otherId_ = 100;
};

rc::Gen<Step> anyStep() {
  return rc::gen::map(generate::range(0, static_cast<int>(Step::accept)),
                      [](int number) { return static_cast<Step>(number); });
}

RC_GTEST_FIXTURE_PROP(MappingActivities, thePadIsExemptedJustWhileAKeyIsBeingLearned, ()) {
  make();
  perform(Step::select);
  for (const Step step : *generate::upTo(40, anyStep())) {
    perform(step);
    RC_ASSERT(engine_->ignored.size() == (*model_->isLearning() ? 1U : 0U));
    if (*model_->isLearning())
      RC_ASSERT(
          engine_->ignored.contains({model_->device()->vendorId, model_->device()->productId}));
  }
  runOut();
  RC_ASSERT(completed_ == started_);
  RC_ASSERT(!*model_->isLearning());
  RC_ASSERT(!*model_->isRecording());
  RC_ASSERT(engine_->ignored.empty());
}

RC_GTEST_FIXTURE_PROP(MappingActivities, oneActivityAtATimeUndoesItsExemptionOnce, ()) {
  make();
  perform(Step::select);
  for (const Step step : *generate::upTo(40, anyStep())) {
    const bool isBusy = *model_->isLearning() || *model_->isRecording();
    if (isBusy && (step == Step::learn || step == Step::record)) continue;
    perform(step);
    RC_ASSERT(alternates());
  }
  runOut();
  RC_ASSERT(alternates());
  RC_ASSERT(engine_->ignores.size() % 2 == 0U);
}

RC_GTEST_FIXTURE_PROP(MappingActivities, whenTheModelGoesEveryCompletionStillComesOnce, ()) {
  make();
  perform(Step::select);
  for (const Step step : *generate::upTo(20, anyStep()))
    perform(step);
  const auto applied = engine_->applied.size();
  const auto edits = edited_.size();
  const auto saves = signatures_->saves;
  const auto captures = capturer_->started.size();
  model_.reset();
  RC_ASSERT(weak_.expired());
  RC_ASSERT(engine_->ignored.empty());
  const auto ignores = engine_->ignores.size();
  runOut();
  RC_ASSERT(completed_ == started_);
  RC_ASSERT(engine_->applied.size() == applied);
  RC_ASSERT(engine_->ignores.size() == ignores);
  RC_ASSERT(edited_.size() == edits);
  RC_ASSERT(signatures_->saves == saves);
  RC_ASSERT(capturer_->started.size() == captures);
}

} // namespace
} // namespace trellivar
