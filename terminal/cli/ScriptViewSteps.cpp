// Steps that open and close views and read and write what the host keeps of them.
#include "host/book/BookError.h"
#include "terminal/cli/ScriptSteps.h"

namespace margindesk {

namespace {

TJson ListViews(TScriptSession& session) {
  TJson list = TJson::array();
  for (const TOpenView& view : session.Host().Views().GetViews()) {
    list.push_back({{"view", view.FHandle}, {"class", view.FClass}, {"caption", view.FCaption}});
  }
  return {{"views", list}};
}

TJson Open(TScriptSession& session, const TScriptArguments& step) {
  TOpenViews& views = session.Host().Views();
  const std::string className = step.Text("class");
  TIBaseView* const plugin = views.FindClass(className);
  if (plugin == nullptr) throw TScriptError("there is no view class " + QuotedForMessage(className));
  if (!plugin->GetIsVisible()) throw TScriptError("the menu does not offer " + QuotedForMessage(className));
  const TViewHandle handle = views.Open(className);
  if (handle == 0) throw TScriptError("the view cannot be opened");
  return {{"view", handle}};
}

TJson Close(TScriptSession& session, const TScriptArguments& step) {
  session.Host().Views().Close(session.View(step).FHandle);
  return TJson::object();
}

TJson Views(TScriptSession& session, const TScriptArguments& /*step*/) { return ListViews(session); }

TJson Layout(TScriptSession& session, const TScriptArguments& step) {
  return {{"text", session.Host().Views().GetLayout(session.View(step).FHandle)}};
}

TJson SetLayout(TScriptSession& session, const TScriptArguments& step) {
  if (!session.Host().Views().SetLayout(session.View(step).FHandle, step.Text("text"))) {
    throw TScriptError("the view takes no layout");
  }
  return TJson::object();
}

TJson Group(TScriptSession& session, const TScriptArguments& step) {
  TOpenViews& views = session.Host().Views();
  const TViewHandle handle = session.View(step).FHandle;
  if (step.Has("value") && !views.SetGroup(handle, step.Text("value"))) {
    throw TScriptError("the view joins no group");
  }
  return {{"group", views.GetGroup(handle)}};
}

TJson Caption(TScriptSession& session, const TScriptArguments& step) {
  return {{"caption", session.View(step).FCaption}};
}

std::vector<TCaptionButton*> GetButtons(TScriptSession& session, const TScriptArguments& step) {
  const TViewHandle handle = session.View(step).FHandle;
  std::vector<TCaptionButton*> buttons;
  session.Host().Views().FindPlugin(handle)->GetViewCaptionButtons(handle, buttons);
  return buttons;
}

TJson Buttons(TScriptSession& session, const TScriptArguments& step) {
  TJson list = TJson::array();
  for (const TCaptionButton* button : GetButtons(session, step)) {
    list.push_back({{"hint", button->FHint},
                    {"visible", button->FVisible},
                    {"down", button->FDown != 0},
                    {"image", button->FImageIndex}});
  }
  return {{"buttons", list}};
}

TWorkspaces& GetWorkspaces(TScriptSession& session) {
  TWorkspaces* workspaces = session.Host().Workspaces();
  if (workspaces == nullptr) throw TScriptError("no workspaces are kept");
  return *workspaces;
}

// Whoever keeps workspaces tells a failure to the user.
[[noreturn]] void ThrowMessages(TScriptSession& session) {
  std::string reason;
  for (const std::string& message : session.TakeMessages()) {
    reason.append(reason.empty() ? "" : "; ").append(message);
  }
  throw TScriptError(reason);
}

TJson SaveWorkspace(TScriptSession& session, const TScriptArguments& step) {
  if (!GetWorkspaces(session).Save(step.Text("name"))) ThrowMessages(session);
  return TJson::object();
}

TJson LoadWorkspace(TScriptSession& session, const TScriptArguments& step) {
  if (!GetWorkspaces(session).Load(step.Text("name"))) ThrowMessages(session);
  return ListViews(session);
}

}  // namespace

void ClickCaptionButton(TScriptSession& session, const TScriptArguments& step, std::int32_t index) {
  const std::vector<TCaptionButton*> buttons = GetButtons(session, step);
  if (index < 0 || static_cast<std::size_t>(index) >= buttons.size()) {
    throw TScriptError("the view has no caption button " + std::to_string(index));
  }
  if (!buttons[static_cast<std::size_t>(index)]->FVisible) throw TScriptError("the button is hidden");
  const TViewHandle handle = session.View(step).FHandle;
  session.Host().Views().FindPlugin(handle)->HandleCaptionButtonClick(handle, index);
}

std::vector<TScriptStep> MakeViewSteps() {
  const TScriptMember name{"name"};
  return {{"open", {{"class"}}, &Open},
          {"close", {}, &Close},
          {"views", {}, &Views},
          {"layout", {}, &Layout},
          {"setlayout", {{"text"}}, &SetLayout},
          {"group", {{"value", TScriptKind::kText, false}}, &Group},
          {"caption", {}, &Caption},
          {"buttons", {}, &Buttons},
          {"saveworkspace", {name}, &SaveWorkspace},
          {"loadworkspace", {name}, &LoadWorkspace}};
}

}  // namespace margindesk
