// String constructor, wrapper objects and the text methods.
print(String() + "|" + String(void 0) + "|" + String(12) + "|" + String(true) + "|" + typeof String("a") + "|" + typeof new String("a"));
var s = new String("hello");
print(s.length + " " + s + " " + s.valueOf() + " " + s.toString() + " " + delete s.length + " " + s.length);
s.length = 2;
print(s.length + " " + String.fromCharCode() + "|" + String.fromCharCode(104, 105, 65601) + "|" + String.fromCharCode.length);

print("abc".charAt(1) + "|" + "abc".charAt(3) + "|" + "abc".charAt(-1) + "|" + "abc".charAt(1.7) + "|" + "abc".charAt());
print("abc".charCodeAt(0) + " " + "abc".charCodeAt(3) + " " + "abc".charCodeAt(-1));
print("hello".indexOf("l") + " " + "hello".indexOf("l", 3) + " " + "hello".indexOf("l", 10) + " " + "hello".indexOf("") + " " + "hello".indexOf("", 10));
print("hello".lastIndexOf("l") + " " + "hello".lastIndexOf("l", 2) + " " + "hello".lastIndexOf("l", NaN) + " " + "hello".lastIndexOf("h", -5) + " " + "hello".lastIndexOf(""));
print("abc".substring(2, 0) + "|" + "abcdef".substring(2) + "|" + "abc".substring(NaN, 2) + "|" + "abc".substring(-3, 10) + "|" + "abc".substring(1, 1) + "|" + "abc".substring(2, void 0) + "|");
print("MiXeD 123".toLowerCase() + " " + "MiXeD 123".toUpperCase());
print("\u00e9\u00df\u0131\u03c3".toUpperCase() == "\u00c9\u00df\u0049\u03a3");
print("\u00c9\u0130\u03a3".toLowerCase() == "\u00e9\u0069\u03c3");

// split: one parameter, no regular-expression form.
var parts = "a,b,,c".split(",");
print(parts.length + " " + parts.join("|"));
print("a,b".split(",", 1).length + " " + "abc".split("").join("|") + " " + "".split("").length + " " + "".split(",").length);
print("abc".split().length + " " + "abc".split()[0] + " " + "a--b--".split("--").join("|") + " " + "x1y1z".split(1).join("|"));
print("a/x/b".split(new RegExp("x")).length + " " + "a/x/b".split(new RegExp("x")).join("|"));

// match and search.
var all = "x1y22z333".match(new RegExp("\\d+", "g"));
print(all.length + " " + all + " " + "abc".match(new RegExp("\\d", "g")));
var first = "x1y22".match(new RegExp("(\\d)(\\d)?"));
print(first + " " + first.index + " " + first.input + " " + first.length);
print("abc".match("b") + " " + "a.c".match(".") + " " + "abc".match() + " " + "abcabc".search("c") + " " + "abc".search("z"));
var counted = new RegExp("b", "g");
counted.lastIndex = 2;
print("abcb".search(counted) + " " + counted.lastIndex + " " + "aaa".match(new RegExp("a*?", "g")).length);

// The text methods work on any object through ToString; toString and valueOf do not.
function objectText() { return "object text"; }
var o = new Object();
o.toString = objectText;
o.indexOf = String.prototype.indexOf;
o.toUpperCase = String.prototype.toUpperCase;
print(o.indexOf("text") + " " + o.toUpperCase());
var n = new Number(42);
n.charAt = String.prototype.charAt;
print(n.charAt(1));
//---
var o = new Object();
o.toString = String.prototype.toString;
o.toString();
//---
var n = new Number(1);
n.valueOf = String.prototype.valueOf;
n + 1;
//---
"a".replace(new RegExp("a"), "b").match("(");
