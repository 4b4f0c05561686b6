#include "app/execution/SouboryBridge.h"

#include "app/execution/CheckedPath.h"
#include "app/execution/FileSearch.h"
#include "app/execution/ObeyedFiles.h"
#include "foundation/Paths.h"
#include "foundation/ProgramLog.h"
#include "foundation/Text.h"
#include "platform/posix/BeneathFolder.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"

#include <cerrno>

namespace morvex {

namespace {

using Chyba = SouboryBridge::Chyba;

std::unexpected<Error> writeFailed(const Error& proc) {
    logCause("writing a file", proc);
    return fail(Chyba{Chyba::Selhalo{"Zápis selhal: " + proc.popis().czech()}});
}

/// The error for a file that could not be opened or read.
Chyba readError(const Error& error, const std::string& name) {
    switch (systemCode(error)) {
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case EINVAL:
    case ENAMETOOLONG:
        return {Chyba::NeniSoubor{name}};
    case EFBIG:
        return {Chyba::PrilisVelky{name, SouboryBridge::readLimit / 1024}};
    default:
        logCause("reading a file", error);
        return {Chyba::Selhalo{"Soubor " + name + " se nepodařilo přečíst."}};
    }
}

Result<Bytes> readFile(const CheckedPath& cesta) {
    TRY(auto, folder, BeneathFolder::open(cesta.slozka));
    TRY(auto, file, folder.openFile(cesta.belowFolder()));
    return readUpTo(file.get(), SouboryBridge::readLimit);
}

Result<std::string> readText(const std::string& cesta, const std::optional<std::string>& slozka,
                             const AllowedFolders& slozky) {
    TRY(auto, checked, overCestu(cesta, slozka, slozky));
    auto bytes = readFile(checked);
    if (!bytes) return fail(readError(bytes.error(), checked.jmeno()));
    return repairUtf8(asText(*bytes));
}

Result<std::string> writeText(const std::string& cesta, const std::string& obsah,
                              const std::optional<std::string>& slozka, const AllowedFolders& slozky) {
    // The path check reports such a path as "not a file", which does not fit a file that is to be created.
    if (cesta.contains('\0')) return writeFailed(SystemError{EINVAL});
    TRY(auto, checked, overCestu(cesta, slozka, slozky));
    auto folder = BeneathFolder::open(checked.slozka);
    if (!folder) return writeFailed(folder.error());
    auto exists = folder->exists(checked.belowFolder());
    // A path that cannot be examined, such as one that is too long, could not be read back later either.
    if (!exists) return writeFailed(exists.error());
    if (*exists) return fail(Chyba{Chyba::UzExistuje{checked.jmeno()}});
    CHECK(ObeyedFiles::checkNames(checked.belowFolder()));
    auto written = folder->writeNew(checked.belowFolder(), asBytes(obsah), ObeyedFiles::checkRepository);
    if (!written && written.error().as<Chyba>()) return fail(written.error());
    if (!written) return writeFailed(written.error());
    return checked.jmeno();
}

Result<std::vector<std::string>> search(const std::string& dotaz, const std::optional<std::string>& slozka,
                                        int limit, const AllowedFolders& slozky, std::stop_token stop) {
    auto chosen = slozky.slozkaProAlias(slozka);
    if (!chosen) return fail(Chyba::noFolder("Neurčil jsi složku.", slozky.aliasy()));
    auto resolved = paths::resolved(*chosen);
    if (!resolved) return std::vector<std::string>();
    auto folder = BeneathFolder::open(*resolved);
    if (!folder) return std::vector<std::string>();
    return FileSearch(dotaz, {.found = limit}).run(*folder, std::move(stop));
}

} // namespace

Task<Result<std::string>> SouboryBridge::precti(std::string cesta, std::optional<std::string> slozka,
                                                AllowedFolders slozky) {
    return runOn(worker_, [=] { return readText(cesta, slozka, slozky); });
}

Task<Result<std::string>> SouboryBridge::zapis(std::string cesta, std::string obsah,
                                               std::optional<std::string> slozka, AllowedFolders slozky) {
    return runOn(worker_, [=] { return writeText(cesta, obsah, slozka, slozky); });
}

Task<Result<std::vector<std::string>>> SouboryBridge::hledej(std::optional<std::string> dotaz,
                                                             std::optional<std::string> slozka, int limit,
                                                             AllowedFolders slozky, std::stop_token stop) {
    return runOn(worker_, [=] { return search(dotaz.value_or(""), slozka, limit, slozky, stop); });
}

} // namespace morvex
