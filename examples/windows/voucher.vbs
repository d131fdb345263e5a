Set con = WScript.CreateObject("ADODB.Connection")
con.Open Login.ConnectionString
Set provider = WScript.CreateObject("Z7CashFlow.VoucherProvider")
Set provider.IGlVoucherProvider_objLogin = Login

Set rows = provider.IGlVoucherProvider_CreateCashFlowColFromDB(con, "gl_accvouch", 1, 1, 6, "2013-01-05")
For Each row In rows
    WScript.Echo "line " & row("inid") & " account " & row("ccode") & " item " & row("cCashItem") & " credit " & row("mc")
Next
WScript.Echo "fits: " & provider.IGlVoucherProvider_CheckCFColFromDB(con, "gl_accvouch", 1, 1, 6, rows, reason)
WScript.Echo "saved: " & provider.IGlVoucherProvider_SaveCashFlowCol(con, "gl_accvouch", 1, 1, 6, rows)

rows(1).SetValue "mc", 9
fits = provider.IGlVoucherProvider_CheckCFColFromDB(con, "gl_accvouch", 1, 1, 6, rows, reason)
WScript.Echo "fits: " & fits & ", " & reason
On Error Resume Next
provider.IGlVoucherProvider_SaveCashFlowCol con, "gl_accvouch", 1, 1, 6, rows
WScript.Echo Err.Number & " from " & Err.Source & ": " & Err.Description
con.Close
