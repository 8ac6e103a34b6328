#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "Forms.h"
#include "SysUtils.h"
#include "TestSupport.h"

namespace orv {
namespace {

using testing::MessageOf;

// Screen() and Application() are process-wide: each test puts back what it changes.
struct TRestoreGlobals {
  String Title = Application().GetTitle();
  ~TRestoreGlobals() {
    Screen().SetOnActiveFormChange(nullptr);
    Screen().SetCursor(crDefault);
    Application().SetOnException(nullptr);
    Application().SetTitle(Title);
  }
};

TEST(Screen, FormsJoinLeaveAndTakeTurnsBeingActive) {
  TRestoreGlobals restore;
  TScreen& screen = Screen();
  const int forms = screen.GetFormCount(), customForms = screen.GetCustomFormCount();
  int changes = 0;
  screen.SetOnActiveFormChange([&](TObject* sender) {
    EXPECT_EQ(sender, &screen);
    ++changes;
  });

  auto first = std::make_unique<TForm>();
  auto second = std::make_unique<TForm>();
  auto custom = std::make_unique<TCustomForm>();
  EXPECT_EQ(screen.GetFormCount(), forms + 2);
  EXPECT_EQ(screen.GetCustomFormCount(), customForms + 3);
  EXPECT_FALSE(first->GetVisible());  // forms start hidden, and that is their default
  EXPECT_TRUE(IsDefaultPropValue(first.get(), FindPropInfo(first.get(), "Visible")));
  EXPECT_EQ(MessageOf<EInvalidOperation>([&] { first->SetFocus(); }),
            "Cannot focus a disabled or invisible window");

  // The active form comes first, as in z-order.
  first->Show();
  second->Show();
  EXPECT_EQ(screen.GetActiveForm(), second.get());
  EXPECT_EQ(screen.GetForm(0), second.get());
  EXPECT_EQ(screen.GetForm(1), first.get());
  custom->Show();
  EXPECT_EQ(screen.GetActiveCustomForm(), custom.get());
  EXPECT_EQ(screen.GetActiveForm(), nullptr);  // not a TForm
  EXPECT_EQ(screen.GetForm(0), second.get());

  // Hiding or freeing the active form activates the next visible one.
  second->Hide();
  EXPECT_TRUE(custom->GetActive());
  custom->Hide();
  EXPECT_EQ(screen.GetActiveForm(), first.get());
  first.reset();
  EXPECT_EQ(screen.GetActiveCustomForm(), nullptr);
  EXPECT_EQ(changes, 5);
  EXPECT_EQ(screen.GetFormCount(), forms + 1);
  EXPECT_EQ(MessageOf<EListError>([&] { screen.GetForm(forms + 1); }),
            "List index out of bounds (" + std::to_string(forms + 1) + ")");

  // The busy cursor is state a bulk operation sets and resets.
  EXPECT_EQ(screen.GetCursor(), crDefault);
  screen.SetCursor(crHourGlass);
  EXPECT_EQ(CursorToString(Screen().GetCursor()), "crHourGlass");
}

TEST(Application, OwnsItsFormsAndTheFirstIsMain) {
  TApplication& application = Application();
  EXPECT_EQ(application.GetTitle(), "orv_framework_tests");
  EXPECT_EQ(ExtractFileName(application.GetExeName()), "orv_framework_tests");

  ASSERT_EQ(application.GetMainForm(), nullptr);
  const int forms = Screen().GetFormCount();
  TForm* main = application.CreateForm<TForm>();
  TForm* other = application.CreateForm<TForm>();
  EXPECT_EQ(application.GetMainForm(), main);
  EXPECT_EQ(Screen().GetFormCount(), forms + 2);

  // A form file holds a form's controls under their parents and its other components at the top.
  auto* panel = new TWinControl(main);
  auto* label = new TGraphicControl(main);
  auto* timer = new TComponent(main);
  panel->SetParent(main);
  label->SetParent(panel);
  std::vector<TComponent*> children;
  main->GetChildren([&](TComponent* child) { children.push_back(child); }, main);
  EXPECT_EQ(children, (std::vector<TComponent*>{panel, timer}));
  children.clear();
  panel->GetChildren([&](TComponent* child) { children.push_back(child); }, main);
  EXPECT_EQ(children, (std::vector<TComponent*>{label}));

  delete main;
  EXPECT_EQ(application.GetMainForm(), nullptr);
  EXPECT_EQ(application.GetComponentCount(), 1);
  delete other;
  EXPECT_EQ(Screen().GetFormCount(), forms);
}

TEST(Application, HandleExceptionGoesToTheHandlerOrIsShown) {
  TRestoreGlobals restore;
  TApplication& application = Application();
  TObject sender;
  auto handle = [&](const std::function<void()>& raise) {
    try {
      raise();
    } catch (...) {
      ApplicationHandleException(&sender);
    }
  };

  std::vector<String> seen;
  application.SetOnException([&](TObject* from, const Exception& e) {
    EXPECT_EQ(from, &sender);
    seen.push_back(e.Message() + (dynamic_cast<const EConvertError*>(&e) ? " (convert)" : ""));
  });
  handle([] { throw EConvertError("bad number"); });
  handle([] { Abort(); });
  handle([] { throw std::runtime_error("from the library"); });
  handle([] { throw 42; });
  application.HandleException(&sender);  // outside a handler: nothing
  EXPECT_EQ(seen, (std::vector<String>{"bad number (convert)", "from the library", "Unknown exception"}));

  application.SetOnException([](TObject*, const Exception&) { throw EDatabaseError("rethrown"); });
  EXPECT_EQ(MessageOf<EDatabaseError>([&] { handle([] { throw EConvertError("x"); }); }), "rethrown");

  // Without a handler the message is shown, with a full stop unless it ends in one or below.
  application.SetOnException(nullptr);
  application.SetTitle("Tests");
  const int shown = application.GetShownCount();
  handle([] { throw EDatabaseError("Field 'Name' not found"); });
  EXPECT_EQ(application.GetLastShownMessage(), "Field 'Name' not found.");
  handle([] { throw Exception("Why?"); });
  EXPECT_EQ(application.GetLastShownMessage(), "Why?.");
  handle([] { throw Exception("Line 3:\r'a'"); });
  EXPECT_EQ(application.GetLastShownMessage(), "Line 3:\r'a'");
  handle([] { Abort(); });
  EXPECT_EQ(application.GetShownCount(), shown + 3);
}

}  // namespace
}  // namespace orv
