#include "platform/mac/network/mac_url_loading.h"

#import <Security/Security.h>

#include <cstdlib>

#include "platform/mac/bridge/cf_ref.h"
#include "platform/mac/bridge/mac_text.h"

namespace nimbletype {
namespace {

// As browsers do with what people type; escapes that are there already stay.
NSString* escaped(const std::string& url) {
  NSMutableCharacterSet* legal = [NSCharacterSet.URLQueryAllowedCharacterSet mutableCopy];
  [legal addCharactersInString:@"%#[]"];
  return [nsString(url) stringByAddingPercentEncodingWithAllowedCharacters:legal];
}

NSArray* readCertificates(const char* file) {
  NSData* data = [NSData dataWithContentsOfFile:[NSString stringWithUTF8String:file]];
  if (!data) return @[];
  const auto items = copiedBy<CFArrayRef>([&](CFArrayRef* out) {
    SecExternalFormat format = kSecFormatPEMSequence;
    SecExternalItemType type = kSecItemTypeAggregate;
    return SecItemImport((__bridge CFDataRef)data, CFSTR("pem"), &format, &type, 0, nullptr, nullptr, out);
  });
  return items ? (__bridge NSArray*)items.get() : @[];
}

bool isTrustedBesides(SecTrustRef trust) {
  const char* file = std::getenv("SSL_CERT_FILE");
  if (!file || !trust) return false;
  SecTrustSetAnchorCertificates(trust, (__bridge CFArrayRef)readCertificates(file));
  SecTrustSetAnchorCertificatesOnly(trust, false);
  return SecTrustEvaluateWithError(trust, nullptr);
}

}  // namespace

void setUpConfiguration(NSURLSessionConfiguration* configuration) {
  configuration.URLCache = nil;
  configuration.HTTPCookieStorage = nil;
  configuration.HTTPShouldSetCookies = NO;
  configuration.URLCredentialStorage = nil;
  configuration.TLSMinimumSupportedProtocolVersion = tls_protocol_version_TLSv12;
}

NSMutableURLRequest* urlRequest(NSURL* url, const std::vector<HttpHeader>& headers) {
  NSMutableURLRequest* request = [NSMutableURLRequest requestWithURL:url];
  [request setValue:@"Nimbletype" forHTTPHeaderField:@"User-Agent"];
  [request setValue:@"identity" forHTTPHeaderField:@"Accept-Encoding"];
  [request setValue:@"*" forHTTPHeaderField:@"Accept-Language"];  // the system would tell the user's
  for (const auto& [name, value] : headers)
    [request setValue:nsString(value) forHTTPHeaderField:nsString(name)];
  return request;
}

NSURL* webAddress(const std::string& url) {
  NSURL* address = [NSURL URLWithString:escaped(url)];
  NSString* scheme = address.scheme.lowercaseString;
  const bool web = [scheme isEqualToString:@"http"] || [scheme isEqualToString:@"https"];
  return web && address.host.length > 0 ? address : nil;
}

bool isThisMachine(NSURL* url) {
  NSString* host = url.host.lowercaseString;
  return [host isEqualToString:@"localhost"] || [host hasSuffix:@".localhost"] || [host hasPrefix:@"127."] ||
         [host isEqualToString:@"::1"];
}

std::vector<HttpHeader> headersOf(NSHTTPURLResponse* response) {
  std::vector<HttpHeader> headers;
  for (NSString* name in response.allHeaderFields)
    headers.push_back({utf8String(name), utf8String([response valueForHTTPHeaderField:name])});
  return headers;
}

void answerChallenge(NSURLAuthenticationChallenge* challenge, ChallengeAnswer answer) {
  NSURLProtectionSpace* space = challenge.protectionSpace;
  const bool isTrust = [space.authenticationMethod isEqualToString:NSURLAuthenticationMethodServerTrust];
  if (isTrust && isTrustedBesides(space.serverTrust))
    return answer(NSURLSessionAuthChallengeUseCredential,
                  [NSURLCredential credentialForTrust:space.serverTrust]);
  const bool systemsOwn = isTrust || space.isProxy;
  answer(systemsOwn ? NSURLSessionAuthChallengePerformDefaultHandling
                    : NSURLSessionAuthChallengeRejectProtectionSpace,
         nil);
}

}  // namespace nimbletype
