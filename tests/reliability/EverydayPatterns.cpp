#include "EverydayPatterns.h"

#include <iterator>

namespace qor_test {

std::vector<std::string> everydayPatterns() {
  return {
      // IPv4 addresses
      R"~(\d+\.\d+\.\d+\.\d+)~",
      R"~(\d{1,3}\.\d{1,3}\.\d{1,3}\.\d{1,3})~",
      R"~((\d{1,3}\.){3}\d{1,3})~",
      R"~((?:[0-9]{1,3}\.){3}[0-9]{1,3})~",
      R"~(\b(?:\d{1,3}\.){3}\d{1,3}\b)~",
      R"~(^\d{1,3}(\.\d{1,3}){3})~",
      R"~((?:25[0-5]|2[0-4]\d|1?\d?\d)(?:\.(?:25[0-5]|2[0-4]\d|1?\d?\d)){3})~",
      R"~(\b(?:(?:25[0-5]|2[0-4]\d|1?\d?\d)\.){3}(?:25[0-5]|2[0-4]\d|1?\d?\d)\b)~",
      R"~((?:(?:25[0-5]|2[0-4]\d|[01]?\d\d?)\.){3}(?:25[0-5]|2[0-4]\d|[01]?\d\d?))~",
      R"~(10\.\d+\.\d+\.\d+)~",
      R"~(192\.168\.\d{1,3}\.\d{1,3})~",
      R"~(172\.(1[6-9]|2\d|3[01])\.)~",
      R"~(127\.0\.0\.1)~",
      R"~((10|172|192)\.)~",
      R"~(\b10(?:\.\d{1,3}){3}\b)~",
      R"~((?<!\d)\d{1,3}(?:\.\d{1,3}){3}(?!\d))~",
      R"~((?<ip>\d+(?:\.\d+){3}))~",
      R"~((?P<address>(?:\d{1,3}\.){3}\d{1,3}))~",
      R"~(\d+\.\d+\.\d+\.\d+:\d+)~",
      R"~((\d+\.){3}\d+:(22|80|443)\b)~",
      R"~(from (\d{1,3}\.){3}\d{1,3})~",
      R"~(\d+\.\d+\.\d+\.\d+ ->)~",
      R"~(10\.0\.[0-3]\.\d+)~",
      R"~(\.(0|255)\b)~",
      R"~(^(?!.*10\.))~",
      R"~((?=.*\d+\.\d+\.\d+\.\d+).*eth)~",
      R"~(inet \d+(\.\d+){3})~",
      R"~(^.*\b(\d+)\.(\d+)\.\1\.\2\b.*$)~",
      // Prefixes
      R"~(\d+\.\d+\.\d+\.\d+/\d+)~",
      R"~((?:\d{1,3}\.){3}\d{1,3}/\d{1,2})~",
      R"~((?:\d{1,3}\.){3}\d{1,3}/(?:3[0-2]|[12]?\d))~",
      R"~(\b(?:(?:25[0-5]|2[0-4]\d|1?\d?\d)(?:\.|(?=/))){4}/(?:3[0-2]|[12]?\d)\b)~",
      R"~(/(8|16|24|32)\b)~",
      R"~(/24(?!\d))~",
      R"~(/3[0-2])~",
      R"~(0\.0\.0\.0/0)~",
      R"~((?<=/)\d+)~",
      R"~(\d/(?:[89]|[12]\d|3[0-2])\s)~",
      R"~(255\.255\.255\.\d+)~",
      R"~(\b255(\.(255|0)){3}\b)~",
      // MAC addresses
      R"~(([0-9a-f]{2}:){5}[0-9a-f]{2})~",
      R"~((?:[0-9A-Fa-f]{2}[:-]){5}[0-9A-Fa-f]{2})~",
      R"~(\b(?:[[:xdigit:]]{2}:){5}[[:xdigit:]]{2}\b)~",
      R"~([0-9a-f]{4}\.[0-9a-f]{4}\.[0-9a-f]{4})~",
      R"~((?:[0-9a-f]{4}\.){2}[0-9a-f]{4})~",
      R"~(00:1b:[0-9a-f:]+)~",
      R"~(ff:ff:ff:ff:ff:ff)~",
      R"~(^(?i)([0-9A-F]{2}[:-]){5}([0-9A-F]{2}))~",
      R"~((?i:mac) [0-9a-f:]{17})~",
      R"~(([0-9a-f]{2})(?::[0-9a-f]{2}){4}:\1)~",
      R"~((?<mac>(?:[0-9a-f]{2}:){5}[0-9a-f]{2}))~",
      R"~(lladdr [0-9a-f:]{17})~",
      R"~((?:\b[0-9a-f]{2}(?::|\b)){6})~",
      // IPv6 addresses
      R"~((?:[0-9a-f]{1,4}:){7}[0-9a-f]{1,4})~",
      R"~(([0-9a-fA-F]{0,4}:){2,7}[0-9a-fA-F]{1,4})~",
      R"~(fe80::[0-9a-f:]+)~",
      R"~(2001:db8:[0-9a-f:]+)~",
      R"~(\b(?:[0-9a-f]{1,4}:){1,7}:(?:[0-9a-f]{1,4})?)~",
      R"~(::1\b)~",
      R"~(::/0)~",
      R"~((?:(?:[0-9A-Fa-f]{1,4}:){7}[0-9A-Fa-f]{1,4}|(?:[0-9A-Fa-f]{1,4}:){1,7}:|(?:[0-9A-Fa-f]{1,4}:){1,6}:[0-9A-Fa-f]{1,4}))~",
      R"~([0-9a-f:]+/64)~",
      R"~((?<![0-9a-f:])(?:[0-9a-f]{1,4}:){3,})~",
      R"~(inet6 [0-9a-f:]+)~",
      R"~(fe80:(?::[0-9a-f]{1,4}){1,4})~",
      R"~((?i)\b(?:[0-9a-f]{1,4}::?){2,7}[0-9a-f]{1,4}\b)~",
      R"~(ff0[0-9a-f]::)~",
      R"~(\[[0-9a-f:]+\]:\d+)~",
      R"~((?<v6>[0-9a-f]{0,4}(?::[0-9a-f]{0,4}){2,7}))~",
      // Identifiers
      R"~([0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12})~",
      R"~([0-9a-fA-F]{8}(?:-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12})~",
      R"~(\b[[:xdigit:]]{8}(-[[:xdigit:]]{4}){3}-[[:xdigit:]]{12}\b)~",
      R"~([0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12})~",
      R"~(id=[0-9a-f-]{36})~",
      R"~(\b[0-9a-f]{32}\b)~",
      R"~(\b[0-9a-f]{40}\b)~",
      R"~(0x[0-9a-f]+)~",
      R"~(0x[0-9A-Fa-f]{4,8})~",
      R"~(\b0[xX][[:xdigit:]]+\b)~",
      R"~(#\d+)~",
      R"~(\bsn[-_]?\d{4,}\b)~",
      R"~(ticket-\d{3,5})~",
      R"~([A-Z]{2,5}-\d+)~",
      R"~((?<id>[0-9a-f]{8})-(?&id)?)~",
      R"~(session [0-9a-f]{8,16})~",
      // Links and host names
      R"~(https?://\S+)~",
      R"~(https?://[^/\s]+(/\S*)?)~",
      R"~((?:https?|ftp)://[\w.-]+(?::\d+)?(?:/[\w./?=&%-]*)?)~",
      R"~(\bhttps?://(?:[a-z0-9-]+\.)+[a-z]{2,}(?::\d{2,5})?(?:/[^\s]*)?)~",
      R"~(^(?:([a-z]+)://)?([^:/\s]+)(:\d+)?(/.*)?$)~",
      R"~(www\.\w+\.com)~",
      R"~([\w.+-]+@[\w-]+\.[\w.]+)~",
      R"~(\b[A-Za-z0-9._%+-]+@[A-Za-z0-9.-]+\.[A-Za-z]{2,}\b)~",
      R"~(([a-z0-9-]+\.)+(com|net|org))~",
      R"~(\b(?:[a-z0-9](?:[a-z0-9-]{0,61}[a-z0-9])?\.)+[a-z]{2,6}\b)~",
      R"~(user@host\d+)~",
      R"~(host\d+\.example\.(com|net))~",
      R"~(\.example\.)~",
      R"~((?<=@)[\w.-]+)~",
      R"~(\?(\w+=\w+&?)+)~",
      R"~(/[\w/.-]+\.(html|log|cfg))~",
      R"~(GET|POST|PUT|DELETE)~",
      R"~("(GET|POST) [^"]+" \d{3})~",
      R"~(HTTP/1\.[01])~",
      R"~((?<scheme>https?)://(?<host>[^/:\s]+))~",
      // Times
      R"~(\d{4}-\d{2}-\d{2})~",
      R"~(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d)~",
      R"~(\d{2}:\d{2}:\d{2})~",
      R"~(\b\d\d:\d\d:\d\d\.\d+\b)~",
      R"~(^\d{4}-\d{2}-\d{2}[ T]\d{2}:\d{2}:\d{2}(?:\.\d+)?(?:Z|[+-]\d{2}:?\d{2})?)~",
      R"~((?:[01]\d|2[0-3]):[0-5]\d:[0-5]\d)~",
      R"~((?:0[1-9]|1[0-2])/(?:0[1-9]|[12]\d|3[01])/\d{4})~",
      R"~(^[A-Z][a-z]{2} [ \d]\d \d\d:\d\d:\d\d)~",
      R"~((?:Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)\s+\d{1,2})~",
      R"~(\b(Mon|Tue|Wed|Thu|Fri|Sat|Sun)\b)~",
      R"~(12:0[0-5]:)~",
      R"~(\s1[2-4]:\d\d:\d\d\s)~",
      R"~((?<hour>\d\d):(?<minute>\d\d):(?<second>\d\d))~",
      R"~((?P<date>\d{4}-\d\d-\d\d))~",
      R"~((\d\d):\1:)~",
      R"~(\d+ (seconds|minutes|hours|days))~",
      R"~(uptime( is)? \d+ days?)~",
      R"~(\d+[dhms]\b)~",
      R"~((?:\d+d)?(?:\d+h)?(?:\d+m)?\d+s)~",
      R"~(\[\d+\.\d{6}\])~",
      R"~(\d{10}(?:\.\d+)?)~",
      R"~((?<!\d)\d\d:\d\d(?!:))~",
      R"~(2024-0[1-3]-\d\d)~",
      R"~(^(?=.*12:)(?=.*eth))~",
      R"~(\d{1,2}:\d{2} ?(?:[AaPp]\.?[Mm]\.?)?)~",
      // Interfaces
      R"~(eth\d)~",
      R"~(eth[0-3]\b)~",
      R"~(eth0|eth1)~",
      R"~((eth|wlan|lo)\d*)~",
      R"~(Gi(gabitEthernet)?\d+/\d+)~",
      R"~(GigabitEthernet\d+/\d+/\d+)~",
      R"~(\b(?:Gi|Te|Fa|Eth)\d+(?:/\d+){0,2}\b)~",
      R"~((?i)(gigabit|fast|tengig)ethernet)~",
      R"~(\w+\d+/\d+(\.\d+)?)~",
      R"~(interface \w+)~",
      R"~(^interface \S+$)~",
      R"~(Vlan\d+)~",
      R"~(vlan \d{1,4}\b)~",
      R"~(\bvlan (?:[1-9]\d{0,2}|[1-3]\d{3}|40[0-8]\d|409[0-4])\b)~",
      R"~(\b(up|down)\b)~",
      R"~(is (administratively )?down)~",
      R"~(is up, line protocol is (up|down))~",
      R"~(line protocol is (?!up))~",
      R"~(changed state to (up|down))~",
      R"~((up|down)$)~",
      R"~((link|protocol).*down)~",
      R"~((\w+\s)+link)~",
      R"~(link (?:is )?(?:up|down))~",
      R"~(mtu \d+)~",
      R"~(mtu (1500|9000)\b)~",
      R"~(speed \d+(?:Mbps|Gbps)?)~",
      R"~((full|half)[- ]duplex)~",
      R"~(port-channel\d+|Po\d+)~",
      R"~(\bPort \d+(?:-\d+)?)~",
      R"~((RX|TX) (packets|bytes|errors)[: ]\d+)~",
      R"~(errors:[1-9]\d*)~",
      R"~([1-9]\d* (input|output) errors)~",
      R"~(dropped[:=]? ?[1-9])~",
      R"~(eth(?<unit>\d+))~",
      R"~((?<=eth)\d)~",
      R"~(eth\d+(?=: link))~",
      R"~((?<!err )eth)~",
      R"~(^(?!.*\beth0\b).*eth)~",
      R"~(lo\b|lo0)~",
      R"~(tun\d+|tap\d+)~",
      R"~(br-[a-f0-9]+)~",
      R"~(bond\d(\.\d+)?)~",
      R"~(sub-?interface)~",
      // Syslog records
      R"~(<\d{1,3}>)~",
      R"~(^<(?:1(?:[0-8]\d|9[01])|[1-9]?\d)>)~",
      R"~(%[A-Z]+-\d-[A-Z]+:)~",
      R"~(%[A-Z0-9_]+-[0-7]-[A-Z0-9_]+)~",
      R"~(%(LINK|LINEPROTO)-[35]-\w+)~",
      R"~(\-[0-3]-)~",
      R"~(\w+\[\d+\]:)~",
      R"~(sshd\[\d+\]: (Accepted|Failed))~",
      R"~((Accepted|Failed) password for (invalid user )?\w+ from)~",
      R"~(kernel: \[ *\d+\.\d+\])~",
      R"~(^\S+ \S+ \w+(\[\d+\])?:)~",
      R"~(^(?<time>\S+ \S+) (?<host>\S+) (?<program>[\w/-]+)(?:\[(?<pid>\d+)\])?:)~",
      R"~(^\w{3}\s+\d{1,2} [\d:]{8} \S+ \S+?(\[\d+\])?:)~",
      R"~(cron|CRON)~",
      R"~(session (opened|closed) for user (\w+))~",
      R"~(pam_unix\(\w+:session\))~",
      R"~((daemon|auth|local[0-7])\.(info|warn|err))~",
      R"~(last message repeated \d+ times)~",
      R"~(systemd(-\w+)?\[1\])~",
      R"~(su: |sudo:)~",
      R"~(dhcpd?: DHCP(ACK|REQUEST|DISCOVER|OFFER))~",
      R"~(BGP|OSPF|ISIS)~",
      R"~((?:bgp|ospf)[ \w]*neighbor)~",
      R"~(neighbor \S+ (Up|Down))~",
      R"~(%BGP-5-ADJCHANGE)~",
      R"~(ADJCHANGE.*(Up|Down)$)~",
      R"~(OSPF.*(FULL|DOWN|INIT))~",
      R"~(spanning[- ]tree)~",
      R"~(snmp(trap)?d?)~",
      R"~(authentication (failure|error))~",
      // Levels
      R"~(ERROR)~",
      R"~(ERROR|WARN)~",
      R"~(error|warning|critical)~",
      R"~((?i)error)~",
      R"~((?i)\b(err(or)?|fail(ed|ure)?|crit(ical)?)\b)~",
      R"~(\b(?:DEBUG|INFO|WARN(?:ING)?|ERROR|FATAL)\b)~",
      R"~(\[(?:INFO|WARN|ERROR)\])~",
      R"~(^(?!.*(?:DEBUG|INFO)).*$)~",
      R"~(^(?!.*DEBUG).+)~",
      R"~(\bWARN(ING)?\b)~",
      R"~((?<level>INFO|WARN|ERROR))~",
      R"~(level=(warn|error))~",
      R"~(level="?(?:warn|error|fatal)"?)~",
      R"~(severity [0-4]\b)~",
      R"~(fatal)~",
      R"~(panic|oops|segfault)~",
      R"~((fail|error|timeout).*(retry|abort))~",
      R"~((?=.*ERROR)(?=.*timeout))~",
      R"~((?<!no )error)~",
      R"~(error(?!s))~",
      R"~(errors?\b)~",
      R"~(fail(?:ed|ure)?)~",
      R"~(denied|refused|rejected)~",
      R"~(time[d ]?-?out)~",
      R"~([Tt]imed? ?out)~",
      R"~((?:un)?reachable)~",
      R"~((not|un)\s?known)~",
      R"~(E\w+R)~",
      R"~(^ERROR)~",
      R"~((ERROR)+)~",
      R"~([Ee]rror:? ?\d*)~",
      // Keys and values
      R"~(\w+=\w+)~",
      R"~(\w+=\S+)~",
      R"~((\w+)=(\w+))~",
      R"~((\w+=\S+ ?)+)~",
      R"~(\bkey=\d+)~",
      R"~(user=(?!root)\w+)~",
      R"~((?<key>\w+)=(?<value>\S+))~",
      R"~((?:\w+=(?:"[^"]*"|\S+)\s*)+)~",
      R"~(\b(\w+)=\1\b)~",
      R"~(status[=:]\s*\d+)~",
      R"~(code[:=] ?(4\d\d|5\d\d))~",
      R"~(^\s*\w+\s*[:=]\s*.+$)~",
      R"~([^=\s]+=[^=\s]+)~",
      R"~(count: ?\d+)~",
      R"~(total \d+)~",
      R"~(cpu[ =:]+\d+(\.\d+)?%)~",
      R"~(mem(?:ory)?[ =:]+\d+ ?[KMG]?B)~",
      R"~((rate|load)[^\d]{0,5}\d)~",
      R"~(pid=\d+)~",
      R"~(name="?[\w-]+"?)~",
      R"~({"\w+": ?\d+})~",
      R"~("\w+": ?"[^"]*")~",
      R"~(\{[^}]*\})~",
      R"~(\[[^\]]*\])~",
      R"~(\([^()]*\))~",
      R"~(<[^>]+>)~",
      R"~((\((?:[^()]|(?1))*\)))~",
      R"~(\w+\(\))~",
      // Numbers
      R"~(\d)~",
      R"~(\d+)~",
      R"~(\d{5})~",
      R"~(\b\d{5}\b)~",
      R"~([-]?\d+)~",
      R"~([+-]?\d+(?:\.\d+)?)~",
      R"~([-+]?(?:\d*\.\d+|\d+)(?:[eE][-+]?\d+)?)~",
      R"~(\b\d+%)~",
      R"~(\d{1,3}(?:,\d{3})+)~",
      R"~([1-9]\d*)~",
      R"~(\b0\b)~",
      R"~((?<![\d.])\d+(?![\d.]))~",
      R"~(\b(?:[1-9]|[1-9]\d|100)\b)~",
      R"~(\b[5-9]\d{2,}\b)~",
      R"~(\d+\.\d{2}\b)~",
      R"~(\d+ ?(?:[KMG]i?)?B\b)~",
      R"~((\d)\1)~",
      R"~((\d)\1\1)~",
      R"~((\d+) \1)~",
      R"~(^\D*\d+\D*$)~",
      R"~(^[^0-9]*$)~",
      R"~(\b[01]+\b)~",
      R"~(\b\d+/\d+\b)~",
      R"~(\d+(?= ms))~",
      R"~(\d+ms)~",
      R"~(0*[1-9]\d{3})~",
      R"~(port (\d{4,5}))~",
      R"~(\bport (?:6553[0-5]|655[0-2]\d|65[0-4]\d\d|6[0-4]\d{3}|[1-5]\d{4}|[1-9]\d{0,3})\b)~",
      // Words and blanks
      R"~(.)~",
      R"~(^)~",
      R"~($)~",
      R"~(^$)~",
      R"~(^\s*$)~",
      R"~(.+)~",
      R"~(^.{40})~",
      R"~(^.{0,60}$)~",
      R"~(.{80,})~",
      R"~(\s+$)~",
      R"~(^\s)~",
      R"~(\S+\s+\S+)~",
      R"~(^\S+ \S+ \S+)~",
      R"~((\S+\s+){5}\S+)~",
      R"~(\t)~",
      R"~([ ]{2,})~",
      R"~(^#)~",
      R"~(^!)~",
      R"~(^[^#!])~",
      R"~("[^"]*")~",
      R"~('[^']*')~",
      R"~((["']).*?\1)~",
      R"~("(?:[^"\\]|\\.)*")~",
      R"~(a.*b)~",
      R"~(a.*?b)~",
      R"~(\w+)~",
      R"~(\b\w{8,}\b)~",
      R"~(\b[A-Z]\w+)~",
      R"~(\b[A-Z]{4,}\b)~",
      R"~([A-Z])~",
      R"~([[:upper:]]{3})~",
      R"~([[:punct:]]{2})~",
      R"~([^[:print:]])~",
      R"~((\w)\1)~",
      R"~(\b(\w+) \1\b)~",
      R"~(^(\w+).*\1$)~",
      R"~((?s).+)~",
      R"~((?x) eth \d+ # unit)~",
      R"~(\Qeth0:\E)~",
      R"~(^(?>\S+) link)~",
      R"~(\w++:)~",
      R"~((?:a|b|c)+d)~",
      R"~(^(?:.*,){3})~",
      R"~((?:[^,]*,){2})~",
      R"~(link.*(up|down))~",
      R"~(link|route|peer)~",
      R"~(^.*(link|route).*(up|down).*$)~",
      R"~(\blink\b)~",
      R"~((?i)LINK)~",
      R"~([Ll]ink [Uu]p)~",
      R"~((no )?route to)~",
      R"~((?=.*\bup\b))~",
      R"~(\w+-\w+)~",
      R"~(\.$)~",
      R"~([.!?]$)~",
      R"~(:\s)~",
      R"~([aeiou]{3})~",
      R"~(\bconn(?:ection)? (?:closed|reset|refused))~",
      R"~(\xe4|ae)~",
      R"~((?:^|\s)-\w\b)~",
  };
}

namespace {

std::string number(unsigned n) { return std::to_string(n); }

std::string hex(unsigned n, unsigned digits) {
  constexpr char names[] = "0123456789abcdef";
  std::string result(digits, '0');
  for (std::size_t i = digits; i-- > 0; n /= 16) result[i] = names[n % 16];
  return result;
}

std::string twoDigits(unsigned n) { return (n < 10 ? "0" : "") + number(n); }

// The words of a line, which depend on its number.
class Words {
 public:
  explicit Words(unsigned line) : n_(line) {}

  std::string time() const {
    return "2024-0" + number(1 + n_ % 6) + '-' + twoDigits(1 + n_ % 28) +
           (n_ % 2 == 0 ? ' ' : 'T') + clock();
  }
  std::string clock() const {
    return twoDigits(n_ * 7 % 24) + ':' + twoDigits(n_ * 7 % 60) + ':' +
           twoDigits(n_ * 13 % 60);
  }
  std::string address() const {
    return number(n_ % 3 == 0 ? 192 : 10) + '.' + number(n_ % 5 * 42) + '.' +
           number(n_ % 7) + '.' + number(n_ * 37 % 256);
  }
  std::string address6() const {
    return "fe80::" + hex(n_ * 4099, 4) + ":ff:fe" + hex(n_, 2) + ':' +
           hex(n_ * 77, 3);
  }
  std::string hardwareAddress() const {
    return "00:1b:" + hex(n_, 2) + ':' + hex(n_ * 3, 2) + ':' + hex(n_ * 5, 2) +
           ':' + hex(n_ * 11, 2);
  }
  std::string uuid() const {
    return hex(n_ * 2654435761U, 8) + '-' + hex(n_ * 31, 4) + "-4" +
           hex(n_ * 17, 3) + "-8" + hex(n_ * 7, 3) + '-' + hex(n_, 12);
  }
  std::string state() const { return n_ % 3 == 0 ? "down" : "up"; }
  std::string level() const {
    constexpr char const* levels[] = {"INFO", "DEBUG", "WARNING", "ERROR"};
    return levels[n_ / 3 % 4];
  }
  std::string count(unsigned factor) const { return number(n_ * factor); }
  std::string digit(unsigned end) const { return number(n_ % end); }
  std::string status() const { return number(200 + n_ % 4 * 100); }

 private:
  unsigned n_;
};

std::string linkLine(Words const& w) {
  return w.time() + " eth" + w.digit(5) + ": link is " + w.state() +
         ", mtu 1500, " + w.count(977) + " packets";
}

std::string syslogLine(Words const& w) {
  return "Mar  " + w.digit(9) + ' ' + w.clock() + " host" + w.digit(4) +
         " sshd[" + w.count(61) + "]: Failed password for invalid user u" +
         w.digit(3) + " from " + w.address() + " port " + w.count(641);
}

std::string routerLine(Words const& w) {
  return '<' + w.count(2) + ">%LINK-3-UPDOWN: Interface GigabitEthernet0/" +
         w.digit(4) + ", changed state to " + w.state();
}

std::string addressLine(Words const& w) {
  return "    inet " + w.address() + "/24 brd 255.255.255.0 lladdr " +
         w.hardwareAddress() + " inet6 " + w.address6() + "/64";
}

std::string keyLine(Words const& w) {
  return w.time() + ".250Z level=" + w.level() + " id=" + w.uuid() +
         " user=\"admin " + w.digit(3) + "\" cpu=" + w.digit(100) +
         "% rate=" + w.count(3) + "." + w.digit(10) + " took " + w.digit(90) +
         " ms";
}

std::string requestLine(Words const& w) {
  return w.address() + " - - [" + w.clock() + "] \"GET http://host" +
         w.digit(4) + ".example.com:8080/a/" + w.count(5) +
         "?x=1&y=" + w.digit(6) + " HTTP/1.1\" " + w.status() + ' ' +
         w.count(1021);
}

std::string errorLine(Words const& w) {
  return '[' + w.level() + "] timeout of session 0x" + w.uuid().substr(0, 8) +
         " (try " + w.digit(5) + " of 5): connection refused, 'peer' gone.";
}

std::string wordsLine(Words const& w) {
  return w.digit(2) == "0" ? "# the the route to nowhere " + w.level()
                           : "\tcafe\xe4 -x " + w.count(1001) + '\v' + "end ";
}

std::string shortLine(Words const& w) {
  return w.digit(2) == "0" ? "" : "interface eth" + w.digit(3);
}

std::string routeLine(Words const& w) {
  return "BGP neighbor " + w.address() + " " + w.state() + " for " +
         w.digit(9) + "d " + w.digit(24) + "h, AS65" + w.digit(10) +
         "01, aabbccd (re(set))";
}

}  // namespace

std::vector<std::string> everydayLines() {
  using Template = std::string (*)(Words const&);
  constexpr Template templates[] = {
      linkLine,    syslogLine, routerLine, addressLine, keyLine,
      requestLine, errorLine,  wordsLine,  shortLine,   routeLine};
  std::vector<std::string> lines;
  for (unsigned i = 0; i < 100; ++i) {
    lines.push_back(templates[i % std::size(templates)](Words(i / 2 + i)) +
                    '\n');
  }
  return lines;
}

}  // namespace qor_test
