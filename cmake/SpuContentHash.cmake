# How a Content-Security-Policy names a style or a script that stands in its page.

# Sets `result` to "sha256-" and the digest of `text` in base64.
function(spu_content_hash text result)
  set(alphabet "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 hex "${text}")
  set(base64 "")
  foreach(begin RANGE 0 60 6)  # three bytes are four letters; two are left in the end
    string(SUBSTRING "${hex}00" ${begin} 6 group)
    math(EXPR bits "0x${group}")
    foreach(shift 18 12 6 0)
      math(EXPR index "(${bits} >> ${shift}) & 63")
      string(SUBSTRING "${alphabet}" ${index} 1 letter)
      string(APPEND base64 "${letter}")
    endforeach()
  endforeach()
  string(SUBSTRING "${base64}" 0 43 base64)
  set(${result} "sha256-${base64}=" PARENT_SCOPE)
endfunction()
