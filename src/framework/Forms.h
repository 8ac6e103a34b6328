#pragma once
// Forms, the screen that knows them and the busy cursor, and the application with its
// exception handler.
//
// The two process-wide objects are reached through accessor functions, Screen() and
// Application(), each a function-local static made on first use: nothing depends on the order
// in which modules start, and a module may use them from its own start-up. The application
// makes the screen first, so the screen outlives every form the application owns; a form that
// outlives the screen (at process exit) simply finds no screen to leave.

#include <functional>
#include <vector>

#include "Controls.h"

namespace orv {

class TForm;

// A top-level window. It joins Screen()'s forms when it is made and leaves them when it is
// freed. It starts hidden (Visible is published with default false); Show() makes it visible
// and active, which puts it first in Screen()'s forms, as the platform keeps them in z-order.
class TCustomForm : public TWinControl {
  ORV_CLASS(TCustomForm, TWinControl)
 public:
  explicit TCustomForm(TComponent* AOwner = nullptr);
  ~TCustomForm() override;

  // Hiding the active form makes the next visible form active (none when there is none).
  void SetVisible(bool value) override;
  // Makes the form visible and active.
  void Show();
  // Makes a visible form active.
  void SetFocus();
  bool GetActive() const;

  // For form files: its controls (as any windowed control), then the components it owns that
  // have no parent.
  void GetChildren(const TGetChildProc& proc, TComponent* root) override;
};

class TForm : public TCustomForm {
  ORV_CLASS(TForm, TCustomForm)
 public:
  explicit TForm(TComponent* AOwner = nullptr) : TCustomForm(AOwner) {}
};

// The screen: the forms that exist, the active one, and the cursor shown over the application.
// The cursor is state only here; bulk operations set crHourGlass while they run and crDefault
// afterwards.
class TScreen : public TComponent {
  ORV_CLASS(TScreen, TComponent)
 public:
  explicit TScreen(TComponent* AOwner = nullptr);
  ~TScreen() override;

  // The TForm descendants among the forms, most recently active first.
  int GetFormCount() const;
  // EListError "List index out of bounds (%d)" outside 0..count-1.
  TForm* GetForm(int index) const;
  // Every form of any TCustomForm class, most recently active first.
  int GetCustomFormCount() const { return static_cast<int>(FCustomForms.size()); }
  TCustomForm* GetCustomForm(int index) const;
  TCustomForm* GetActiveCustomForm() const { return FActiveCustomForm; }
  // The active form when it is a TForm, else none.
  TForm* GetActiveForm() const;

  TCursor GetCursor() const { return FCursor; }
  void SetCursor(TCursor value) { FCursor = value; }
  int32_t GetPixelsPerInch() const { return DefaultPixelsPerInch; }

  const TNotifyEvent& GetOnActiveFormChange() const { return FOnActiveFormChange; }
  void SetOnActiveFormChange(TNotifyEvent handler) { FOnActiveFormChange = std::move(handler); }

 private:
  friend class TCustomForm;
  void AddForm(TCustomForm* form);
  void RemoveForm(TCustomForm* form);
  void Activate(TCustomForm* form);
  // When `form` is active, the next visible form becomes active instead.
  void Deactivate(TCustomForm* form);
  void SetActive(TCustomForm* form);

  // Not owned. Whether a form is a TForm is asked when the list is read: while a form is being
  // made, it does not answer as its final class yet.
  std::vector<TCustomForm*> FCustomForms;
  TCustomForm* FActiveCustomForm = nullptr;
  TCursor FCursor = crDefault;
  TNotifyEvent FOnActiveFormChange;
};

// The screen of the process, made on first use.
TScreen& Screen();

using TExceptionEvent = std::function<void(TObject* Sender, const Exception& E)>;

// The application: its title, its main form and the handler of exceptions that nothing else
// handles.
class TApplication : public TComponent {
  ORV_CLASS(TApplication, TComponent)
 public:
  explicit TApplication(TComponent* AOwner = nullptr);

  // Hands the exception being handled (call it inside a catch block) to OnException, or to
  // ShowException when no handler is installed. EAbort goes nowhere: it is the silent
  // exception. A std::exception that is not an Exception goes as an Exception with its text;
  // anything else as "Unknown exception". Outside a catch block it does nothing. An exception
  // that the handler raises goes on to the caller.
  void HandleException(TObject* Sender);
  // The headless message box: writes "<Title>: <message>" to standard error and keeps the
  // message, which GetLastShownMessage() and GetShownCount() report. As the platform shows it,
  // the message gets a full stop unless it ends in one or in a character below it.
  void ShowException(const Exception& E);
  const String& GetLastShownMessage() const { return FLastShownMessage; }
  int GetShownCount() const { return FShownCount; }

  const TExceptionEvent& GetOnException() const { return FOnException; }
  void SetOnException(TExceptionEvent handler) { FOnException = std::move(handler); }

  // The executable's name without folder and extension unless set.
  const String& GetTitle() const { return FTitle; }
  void SetTitle(const String& value) { FTitle = value; }
  // The full path of the executable; empty when the system does not tell it.
  const String& GetExeName() const { return FExeName; }

  // The first form made with CreateForm.
  TForm* GetMainForm() const { return FMainForm; }
  // A form of class F owned by the application; the first one becomes the main form.
  template <class F>
  F* CreateForm() {
    auto* form = new F(this);  // owned by the application from here
    if (!FMainForm) {
      FMainForm = dynamic_cast<TForm*>(static_cast<TComponent*>(form));
      if (FMainForm) FMainFormComponent = form;
    }
    return form;
  }

 protected:
  void Notification(TComponent* AComponent, TOperation Operation) override;

 private:
  String FTitle;
  String FExeName;
  TForm* FMainForm = nullptr;  // owned as a component
  // The same object as a component, to recognise it when it is freed: by then it no longer
  // answers as a TForm.
  TComponent* FMainFormComponent = nullptr;
  TExceptionEvent FOnException;
  String FLastShownMessage;
  int FShownCount = 0;
};

// The application of the process, made on first use (after the screen).
TApplication& Application();

// Application().HandleException(Sender): what a component calls from a catch block when an
// error must not reach its caller.
void ApplicationHandleException(TObject* Sender);

}  // namespace orv
