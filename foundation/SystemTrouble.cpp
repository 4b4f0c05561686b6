#include "foundation/SystemTrouble.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace morvex {

std::string popis(SystemTrouble trouble) {
    switch (trouble) {
        using enum SystemTrouble;
    case notFound:
        return "Soubor nebo složka neexistuje.";
    case notFolder:
        return "Část cesty není složka.";
    case isFolder:
        return "Na této cestě je složka.";
    case exists:
        return "Jméno už je obsazené.";
    case notAllowed:
        return "Chybí k tomu oprávnění.";
    case readOnly:
        return "Disk je jen pro čtení.";
    case diskFull:
        return "Na disku není místo.";
    case quotaUsed:
        return "Vyhrazené místo na disku je vyčerpané.";
    case tooLarge:
        return "Soubor je příliš velký.";
    case linkNotFollowed:
        return "Cesta vede přes odkaz, který nejde sledovat.";
    case nameTooLong:
        return "Jméno nebo cesta je příliš dlouhá.";
    case badPath:
        return "Takovou cestu nejde použít.";
    case leadsElsewhere:
        return "Cesta vede mimo svou složku nebo na jiný disk.";
    case inUse:
        return "Právě to používá jiný program.";
    case exhausted:
        return "Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů.";
    case deviceFailed:
        return "Disk nebo jiné zařízení selhalo.";
    case notSupported:
        return "Tento systém nebo disk to neumí.";
    case notExecutable:
        return "Soubor není program pro tento počítač.";
    case callTooLong:
        return "Zadání je pro program příliš dlouhé.";
    case serviceMissing:
        return "Na tomto počítači taková služba neběží.";
    case serviceSilent:
        return "Služba počítače se neozvala včas.";
    case badAddress:
        return "Adresa serveru není platná.";
    case unknownName:
        return "Jméno serveru síť nezná. Zkontroluj adresu a připojení k síti.";
    case unreachable:
        return "K serveru nevede cesta. Zkontroluj připojení k síti.";
    case refused:
        return "Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese.";
    case timedOut:
        return "Server se neozval včas.";
    case cutOff:
        return "Spojení se přerušilo.";
    case badAnswer:
        return "Server odpověděl nesrozumitelně.";
    case tlsRefused:
        return "Šifrované spojení se serverem se nepodařilo navázat. Pokud server na tomto portu nešifruje, "
               "jeho adresa začíná http://, ne https://.";
    case certificateUntrusted:
        return "Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní autority "
               "ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo "
               "update-ca-certificates.";
    case certificateExpired:
        return "Platnost certifikátu serveru skončila. Zkontroluj hodiny počítače, nebo na serveru "
               "certifikát "
               "obnov.";
    case certificateNotYetValid:
        return "Certifikát serveru ještě neplatí. Zkontroluj hodiny počítače.";
    case certificateOtherName:
        return "Certifikát serveru je vydaný pro jinou adresu. Zkontroluj adresu serveru.";
    case certificateInvalid:
        return "Certifikát serveru není v pořádku.";
    case authoritiesUnreadable:
        return "Seznam autorit, kterým tento počítač věří, nejde přečíst.";
    case other:
        return "Systém ohlásil chybu, kterou neznám.";
    }
}

SystemTrouble troubleOf(int code) {
    struct Row {
        int code;
        SystemTrouble trouble;
    };

    using enum SystemTrouble;
    static constexpr std::array rows{
        Row{ENOENT, notFound},
        Row{ENOTDIR, notFolder},
        Row{EISDIR, isFolder},
        Row{EEXIST, exists},
        Row{ENOTEMPTY, exists},
        Row{EACCES, notAllowed},
        Row{EPERM, notAllowed},
        Row{EROFS, readOnly},
        Row{ENOSPC, diskFull},
        Row{EDQUOT, quotaUsed},
        Row{EFBIG, tooLarge},
        Row{ELOOP, linkNotFollowed},
        Row{EMLINK, linkNotFollowed},
        Row{ENAMETOOLONG, nameTooLong},
        Row{EINVAL, badPath},
        Row{EILSEQ, badPath},
        Row{EXDEV, leadsElsewhere},
        Row{EBUSY, inUse},
        Row{ETXTBSY, inUse},
        Row{EAGAIN, exhausted},
        Row{ENOMEM, exhausted},
        Row{EMFILE, exhausted},
        Row{ENFILE, exhausted},
        Row{ENOBUFS, exhausted},
        Row{ENOLCK, exhausted},
        Row{EIO, deviceFailed},
        Row{ENXIO, deviceFailed},
        Row{ENODEV, deviceFailed},
        Row{ESTALE, deviceFailed},
        Row{ENOSYS, notSupported},
        Row{EOPNOTSUPP, notSupported},
        Row{ENOEXEC, notExecutable},
        Row{E2BIG, callTooLong},
        Row{ECONNREFUSED, refused},
        Row{ENETUNREACH, unreachable},
        Row{EHOSTUNREACH, unreachable},
        Row{ENETDOWN, unreachable},
        Row{EHOSTDOWN, unreachable},
        Row{EADDRNOTAVAIL, unreachable},
        Row{EAFNOSUPPORT, unreachable},
        Row{ETIMEDOUT, timedOut},
        Row{ECONNRESET, cutOff},
        Row{ECONNABORTED, cutOff},
        Row{EPIPE, cutOff},
        Row{ENOTCONN, cutOff},
        Row{ESHUTDOWN, cutOff},
        Row{ENETRESET, cutOff},
    };
    const auto* row = std::ranges::find(rows, code, &Row::code);
    return row == rows.end() ? other : row->trouble;
}

} // namespace morvex
