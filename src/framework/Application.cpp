// TApplication: the process's title, main form and last-resort exception handler.

#include <filesystem>
#include <iostream>

#include "Forms.h"

namespace orv {

ORV_IMPLEMENT_CLASS(TApplication)

TApplication::TApplication(TComponent* AOwner) : TComponent(AOwner) {
  std::error_code error;
  const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return;
  FExeName = exe.string();
  FTitle = exe.stem().string();
}

TApplication& Application() {
  Screen();  // made first, so that it is freed after the forms the application owns
  static TApplication application;
  return application;
}

void ApplicationHandleException(TObject* Sender) { Application().HandleException(Sender); }

void TApplication::HandleException(TObject* Sender) {
  const std::exception_ptr current = std::current_exception();
  if (!current) return;
  auto report = [&](const Exception& e) {
    if (FOnException)
      FOnException(Sender, e);
    else
      ShowException(e);
  };
  try {
    std::rethrow_exception(current);
  } catch (const EAbort&) {
  } catch (const Exception& e) {
    report(e);
  } catch (const std::exception& e) {
    report(Exception(e.what()));
  } catch (...) {
    report(Exception("Unknown exception"));
  }
}

void TApplication::ShowException(const Exception& E) {
  String message = E.Message();
  if (!message.empty() && static_cast<unsigned char>(message.back()) > '.') message += '.';
  FLastShownMessage = message;
  ++FShownCount;
  std::cerr << (FTitle.empty() ? String() : FTitle + ": ") << message << std::endl;
}

void TApplication::Notification(TComponent* AComponent, TOperation Operation) {
  TComponent::Notification(AComponent, Operation);
  if (Operation == opRemove && AComponent && AComponent == FMainFormComponent) {
    FMainForm = nullptr;
    FMainFormComponent = nullptr;
  }
}

}  // namespace orv
