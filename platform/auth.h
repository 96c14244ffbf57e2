// Authorization services: the caller's local roles and the host's
// certificate credentials.
//
// A local administrator is the superuser, a user named by an ADMIN_USER line
// of the configuration, or a member of a group named by an ADMIN_GROUP line.
// A user's certificate credential is the file <root>/etc/credentials/<user>;
// it is valid when it is a non-empty regular file the caller can read.
// Certificate authentication is in use on the host when the directory
// <root>/etc/credentials exists.
#ifndef PLATFORM_AUTH_H_
#define PLATFORM_AUTH_H_

// How a local administrator was recognized (second output of
// qbrd_get_my_local_roles).
enum {
  LOCAL_ROLE_NONE = 0,
  LOCAL_ROLE_SUPERUSER = 1,
  LOCAL_ROLE_ADMIN_USER = 2,
  LOCAL_ROLE_ADMIN_GROUP = 3
};

// Authentication kinds of vnet_get_authentication.
enum { VNET_AUTH_NONE = 0, VNET_AUTH_CERTIFICATE = 1 };

// Sets *isAdmin to 1 when the calling (effective) user is a local
// administrator, else 0, and *how to the LOCAL_ROLE_ value saying why. The
// timeout is accepted for compatibility; the check never blocks. Returns 0,
// or the errno value of a configuration file that cannot be read or parsed.
int qbrd_get_my_local_roles(int* isAdmin, int* how, int timeoutSeconds);

// Checks the certificate credential of `user` (the calling user when null).
// `host`, `reserved` and `flags` are accepted for compatibility and must be
// 0. Returns 0 when the credential is valid, otherwise ENOENT (no credential),
// EACCES (not readable), EINVAL (empty or not a regular file) or another
// errno value.
int vnet_qzss_check_user_cred(const char* user, const char* host, void* reserved, int flags);

// Sets *kind to VNET_AUTH_CERTIFICATE when certificate authentication is in
// use on this host, else VNET_AUTH_NONE. Returns 0, or EINVAL for a null kind.
int vnet_get_authentication(int* kind);

#endif  // PLATFORM_AUTH_H_
