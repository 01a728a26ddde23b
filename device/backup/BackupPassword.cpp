#include "device/backup/BackupPassword.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/rand.h>

#include "device/AccessError.h"

namespace device::backup {

namespace {

// Kept: images hold passwords that were sealed so.
constexpr std::size_t kSaltBytes = 16, kKeyBytes = 32;
constexpr int kRounds = 210'000;

std::string keyOf(std::string_view password, std::string_view salt) {
    std::string key(kKeyBytes, '\0');
    PKCS5_PBKDF2_HMAC(password.data() ? password.data() : "", static_cast<int>(password.size()), reinterpret_cast<const unsigned char *>(salt.data()),
                      static_cast<int>(salt.size()), kRounds, EVP_sha256(), static_cast<int>(key.size()), reinterpret_cast<unsigned char *>(key.data()));
    return key;
}

}  // namespace

std::string sealedPassword(std::string_view password) {
    std::string salt(kSaltBytes, '\0');
    if (RAND_bytes(reinterpret_cast<unsigned char *>(salt.data()), static_cast<int>(salt.size())) != 1)
        throw AccessError(AccessError::Kind::failed, "", "the system gives no random bytes for a password");
    return salt + keyOf(password, salt);
}

bool isPassword(std::string_view password, std::string_view sealed) {
    if (sealed.size() != kSaltBytes + kKeyBytes)
        return false;
    const std::string key = keyOf(password, sealed.substr(0, kSaltBytes));
    return CRYPTO_memcmp(key.data(), sealed.data() + kSaltBytes, kKeyBytes) == 0;
}

}  // namespace device::backup
