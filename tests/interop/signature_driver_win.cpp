// Reports what the trust services and the window say about signed files, for scripts:
//   signature_driver.exe trust CERTIFICATE
//       makes the user trust this root certificate (DER)
//   signature_driver.exe check PATH...
//       prints for each file "state TAB signer TAB 1 for a catalogue, else 0 TAB error code"
//   signature_driver.exe details SUMWRIGHT.EXE PATH...
//       prints for each file what the window's details say about its signature and its origin
//   signature_driver.exe mark PATH TEXT
//       gives the file a download record; in TEXT, "|" stands for a line end
// What is printed is UTF-8.
#include "swr/system/windows_api_win.h"
#include <wincrypt.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "resources/resource_ids.h"
#include "swr/provenance/signature.h"
#include "swr/system/file.h"
#include "swr/system/wide_text_win.h"
#include "swr/text/encoding.h"
#include "tests/ui/running_window_win.h"

namespace app::testing {
namespace {

using Arguments = std::vector<std::u16string>;

// The registry provider: under Wine, what the system provider adds is lost when the process ends.
void Trust(const std::u16string& path) {
  std::ifstream file(swr::WideToUtf8(path), std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const HCERTSTORE store = CertOpenStore(CERT_STORE_PROV_SYSTEM_REGISTRY_W, 0, 0,
                                         CERT_SYSTEM_STORE_CURRENT_USER, L"Root");
  const bool added = store != nullptr &&
                     CertAddEncodedCertificateToStore(
                         store, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(bytes.data()),
                         static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_ALWAYS, nullptr) != FALSE;
  if (store != nullptr) CertCloseStore(store, 0);
  if (!added) throw std::runtime_error("the certificate can't be added");
}

void Check(const Arguments& paths) {
  for (const std::u16string& path : paths) {
    const swr::SignatureResult result = swr::CheckSignature(path);
    std::printf("%u\t%s\t%d\t%08x\n", static_cast<unsigned>(result.state),
                swr::WideToUtf8(result.signer).c_str(), result.viaCatalog ? 1 : 0,
                static_cast<unsigned>(result.errorCode));
  }
}

void Details(const std::u16string& program, const Arguments& paths) {
  SetProgramPath(swr::WideToUtf8(program));
  const RunningWindow window;
  for (const std::u16string& path : paths) {
    window.Command(ID_CLEAR_LIST);
    window.Drop({path});
    window.WaitUntilIdle();
    std::u16string text;
    WaitFor([&] {
      text = window.Text(IDC_DETAILS);
      return text.find(u"Checking...") == text.npos && text.find(u"SHA-256") != text.npos;
    });
    const size_t start = text.find(u"Signature:\t");
    std::u16string line = start == text.npos ? u"no signature line" : text.substr(start);
    for (size_t at = 0; (at = line.find(u"\r\n", at)) != line.npos;) line.replace(at, 2, u"|");
    std::printf("%s\n", swr::WideToUtf8(line).c_str());
  }
}

void Mark(const std::u16string& path, std::u16string text) {
  for (size_t at = 0; (at = text.find(u'|', at)) != text.npos;) text.replace(at, 1, u"\r\n");
  if (swr::WriteWholeFile(path + u":Zone.Identifier", swr::WideToUtf8(text)) != 0) {
    throw std::runtime_error("the record can't be written");
  }
}

void Run(const Arguments& arguments) {
  if (arguments.size() < 3) throw std::runtime_error("usage: signature_driver COMMAND FILE...");
  const std::u16string& command = arguments[1];
  if (command == u"trust") {
    Trust(arguments[2]);
  } else if (command == u"check") {
    Check({arguments.begin() + 2, arguments.end()});
  } else if (command == u"details") {
    Details(arguments[2], {arguments.begin() + 3, arguments.end()});
  } else if (command == u"mark" && arguments.size() == 4) {
    Mark(arguments[2], arguments[3]);
  } else {
    throw std::runtime_error("unknown command");
  }
}

}  // namespace
}  // namespace app::testing

int wmain(int count, wchar_t** values) {
  app::testing::Arguments arguments;
  for (int i = 0; i < count; ++i) arguments.push_back(swr::FromWide(values[i]));
  try {
    app::testing::Run(arguments);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "signature_driver: %s\n", error.what());
    return 1;
  }
  return 0;
}
