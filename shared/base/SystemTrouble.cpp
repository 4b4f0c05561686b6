#include "shared/base/SystemTrouble.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace morvex {

Sentence popis(SystemTrouble trouble) {
    switch (trouble) {
        using enum SystemTrouble;
    case notFound:
        return "Soubor nebo složka neexistuje."_sentence;
    case notFolder:
        return "Část cesty není složka."_sentence;
    case isFolder:
        return "Na této cestě je složka."_sentence;
    case exists:
        return "Jméno už je obsazené."_sentence;
    case notAllowed:
        return "Chybí k tomu oprávnění."_sentence;
    case readOnly:
        return "Disk je jen pro čtení."_sentence;
    case diskFull:
        return "Na disku není místo."_sentence;
    case quotaUsed:
        return "Vyhrazené místo na disku je vyčerpané."_sentence;
    case tooLarge:
        return "Soubor je příliš velký."_sentence;
    case linkNotFollowed:
        return "Cesta vede přes odkaz, který nejde sledovat."_sentence;
    case nameTooLong:
        return "Jméno nebo cesta je příliš dlouhá."_sentence;
    case badPath:
        return "Takovou cestu nejde použít."_sentence;
    case leadsElsewhere:
        return "Cesta vede mimo svou složku nebo na jiný disk."_sentence;
    case inUse:
        return "Právě to používá jiný program."_sentence;
    case exhausted:
        return "Počítači došla paměť nebo už nemůže mít víc otevřených souborů a procesů."_sentence;
    case deviceFailed:
        return "Disk nebo jiné zařízení selhalo."_sentence;
    case notSupported:
        return "Tento systém nebo disk to neumí."_sentence;
    case notExecutable:
        return "Soubor není program pro tento počítač."_sentence;
    case callTooLong:
        return "Zadání je pro program příliš dlouhé."_sentence;
    case serviceMissing:
        return "Na tomto počítači taková služba neběží."_sentence;
    case serviceSilent:
        return "Služba počítače se neozvala včas."_sentence;
    case badAddress:
        return "Adresa serveru není platná."_sentence;
    case unknownName:
        return "Jméno serveru síť nezná. Zkontroluj adresu a připojení k síti."_sentence;
    case unreachable:
        return "K serveru nevede cesta. Zkontroluj připojení k síti."_sentence;
    case refused:
        return "Server spojení odmítl. Nejspíš neběží, nebo má jiný port, než je v adrese."_sentence;
    case timedOut:
        return "Server se neozval včas."_sentence;
    case cutOff:
        return "Spojení se přerušilo."_sentence;
    case badAnswer:
        return "Server odpověděl nesrozumitelně."_sentence;
    case tlsRefused:
        return "Šifrované spojení se serverem se nepodařilo navázat. Pokud server na tomto portu nešifruje, "
               "jeho adresa začíná http://, ne https://."_sentence;
    case certificateUntrusted:
        return "Certifikát serveru nevydala autorita, které tento počítač věří. Certifikát vlastní autority "
               "ulož s příponou .crt do /usr/local/share/ca-certificates a spusť sudo "
               "update-ca-certificates."_sentence;
    case certificateExpired:
        return "Platnost certifikátu serveru skončila. Zkontroluj hodiny počítače, nebo na serveru "
               "certifikát "
               "obnov."_sentence;
    case certificateNotYetValid:
        return "Certifikát serveru ještě neplatí. Zkontroluj hodiny počítače."_sentence;
    case certificateOtherName:
        return "Certifikát serveru je vydaný pro jinou adresu. Zkontroluj adresu serveru."_sentence;
    case certificateInvalid:
        return "Certifikát serveru není v pořádku."_sentence;
    case authoritiesUnreadable:
        return "Seznam autorit, kterým tento počítač věří, nejde přečíst."_sentence;
    case other:
        return "Systém ohlásil chybu, kterou neznám."_sentence;
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
