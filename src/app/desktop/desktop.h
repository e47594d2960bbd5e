// The services of the desktop, as the composition root receives them.
#pragma once

namespace app {

class Clipboard;
class Messages;
class OriginReads;
class Pickers;
class SettingsStore;
class Shell;
class SignatureChecks;

struct Desktop {
  Pickers& pickers;
  Messages& messages;
  Clipboard& clipboard;
  Shell& shell;
  SettingsStore& settings;
  SignatureChecks& signatures;
  OriginReads& origins;
};

}  // namespace app
