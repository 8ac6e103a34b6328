// The component palette: pages of component classes, in the order of registration.

#include <algorithm>

#include "Controls.h"
#include "SysUtils.h"

namespace orv {

namespace {

struct TPalettePage {
  String Name;
  std::vector<TClass> Classes;
};

// Made on first use, so that registration from any module's start-up finds it.
std::vector<TPalettePage>& Pages() {
  static std::vector<TPalettePage> pages;
  return pages;
}

TPalettePage* FindPage(const String& name) {
  auto& pages = Pages();
  auto it = std::find_if(pages.begin(), pages.end(),
                         [&](const TPalettePage& page) { return SameText(page.Name, name); });
  return it == pages.end() ? nullptr : &*it;
}

}  // namespace

void RegisterComponents(const String& Page, const std::vector<TClass>& ComponentClasses) {
  for (TClass cls : ComponentClasses)
    if (!ClassInheritsFrom(cls, TComponent::StaticClass()))
      throw EComponentError(String(cls ? cls->Name : "nil") + " is not a component class");
  TPalettePage* page = FindPage(Page);
  if (!page) page = &Pages().emplace_back(TPalettePage{Page, {}});
  for (TClass cls : ComponentClasses) {
    RegisterClass(cls);
    if (std::find(page->Classes.begin(), page->Classes.end(), cls) == page->Classes.end())
      page->Classes.push_back(cls);
  }
}

std::vector<String> GetPalettePages() {
  std::vector<String> names;
  for (const TPalettePage& page : Pages()) names.push_back(page.Name);
  return names;
}

std::vector<TClass> GetPaletteClasses(const String& Page) {
  const TPalettePage* page = FindPage(Page);
  return page ? page->Classes : std::vector<TClass>();
}

}  // namespace orv
