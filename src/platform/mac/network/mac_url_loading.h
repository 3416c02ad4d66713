#pragma once
#import <Foundation/Foundation.h>

#include <string>
#include <vector>

#include "platform/network/http_client.h"

namespace nimbletype {

// What every use of HTTP here agrees on: no cookies, no caches, bodies as they come, TLS 1.2 at least with
// the server's name checked. The certificates in the PEM file that the environment variable SSL_CERT_FILE
// names are trusted besides the system's.
void setUpConfiguration(NSURLSessionConfiguration* configuration);
NSMutableURLRequest* urlRequest(NSURL* url, const std::vector<HttpHeader>& headers);

// Nil for what is no absolute http or https address.
NSURL* webAddress(const std::string& url);
bool isThisMachine(NSURL* url);
std::vector<HttpHeader> headersOf(NSHTTPURLResponse* response);

using ChallengeAnswer = void (^)(NSURLSessionAuthChallengeDisposition, NSURLCredential*);
// Checks a server's certificate. Asks nobody for a name and a password, except what the system knows of
// proxies.
void answerChallenge(NSURLAuthenticationChallenge* challenge, ChallengeAnswer answer);

}  // namespace nimbletype
